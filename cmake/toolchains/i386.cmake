# 32-bit x86: long as on the controller, and floating point kept in wider registers. The PC's own
# processor runs it, given the loader and the C library of the cross compiler.
set(QUENFOLD_ARCH i386)
set(QUENFOLD_TRIPLET i686-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(QUENFOLD_LIBRARIES /usr/${QUENFOLD_TRIPLET}/lib)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${QUENFOLD_LIBRARIES}/ld-linux.so.2 -Wl,-rpath,${QUENFOLD_LIBRARIES}")
