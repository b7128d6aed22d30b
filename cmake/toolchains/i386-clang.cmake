# 32-bit x86 built by clang, for the sanitizers.
include(${CMAKE_CURRENT_LIST_DIR}/i386.cmake)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET ${QUENFOLD_TRIPLET})
