# The controller: 32-bit ARM with hardware floating point, little-endian, plain char unsigned.
set(QUENFOLD_ARCH armhf)
set(QUENFOLD_TRIPLET arm-linux-gnueabihf)
set(QUENFOLD_QEMU qemu-arm)
# Others compiled a vector of 64-bit numbers otherwise; nothing of theirs is linked.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
