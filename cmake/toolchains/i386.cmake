# 32-bit x86: long as on the controller, and floating point kept in wider registers.
set(QUENFOLD_ARCH i386)
set(QUENFOLD_TRIPLET i686-linux-gnu)
set(QUENFOLD_QEMU qemu-i386)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
