# 32-bit x86 built by clang and run by the PC's own processor: the sanitizers do not work under the
# emulator.
include(${CMAKE_CURRENT_LIST_DIR}/i386.cmake)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET ${QUENFOLD_TRIPLET})
unset(CMAKE_CROSSCOMPILING_EMULATOR)
set(QUENFOLD_LIBRARIES /usr/${QUENFOLD_TRIPLET}/lib)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${QUENFOLD_LIBRARIES}/ld-linux.so.2 -Wl,-rpath,${QUENFOLD_LIBRARIES}")
