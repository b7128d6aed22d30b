# The warnings of our own code, errors in our own builds (the presets set QUENFOLD_WERROR).
option(QUENFOLD_WERROR "Treat warnings as errors" OFF)

add_library(quenfold_warnings INTERFACE)
target_compile_options(
  quenfold_warnings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wsign-conversion
            -Wshadow
            -Wcast-align
            -Wcast-qual
            -Wdouble-promotion
            -Wformat=2
            -Wimplicit-fallthrough
            -Wmissing-declarations
            -Wnon-virtual-dtor
            -Wnull-dereference
            -Wold-style-cast
            -Woverloaded-virtual
            -Wundef
            -Wunused
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-branches>
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
            $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
            $<$<BOOL:${QUENFOLD_WERROR}>:-Werror>)
