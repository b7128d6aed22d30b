# The libraries, taken from the distribution's packages as system headers.
option(QUENFOLD_STATIC_RUNTIME "Link the C++ runtime and fmt into the program" OFF)

find_package(fmt REQUIRED)
# There is no packaged static fmt, but its headers hold all of it: src makes a library of them.
if(QUENFOLD_STATIC_RUNTIME)
  set(QUENFOLD_FMT quenfold_fmt)
else()
  set(QUENFOLD_FMT fmt::fmt)
endif()

find_path(RAPIDJSON_INCLUDE_DIR rapidjson/document.h REQUIRED)
add_library(quenfold_rapidjson INTERFACE)
target_include_directories(quenfold_rapidjson SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIR})

find_path(CJSON_INCLUDE_DIR cjson/cJSON.h REQUIRED)
find_library(CJSON_LIBRARY cjson REQUIRED)
add_library(quenfold_cjson INTERFACE)
target_include_directories(quenfold_cjson SYSTEM INTERFACE ${CJSON_INCLUDE_DIR})
target_link_libraries(quenfold_cjson INTERFACE ${CJSON_LIBRARY})

# All of it is in its header.
find_path(XXHASH_INCLUDE_DIR xxhash.h REQUIRED)
add_library(quenfold_xxhash INTERFACE)
target_include_directories(quenfold_xxhash SYSTEM INTERFACE ${XXHASH_INCLUDE_DIR})

# All of it is in its headers.
find_package(CLI11 REQUIRED)
