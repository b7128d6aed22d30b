# 64-bit ARM, little-endian, plain char unsigned.
set(QUENFOLD_ARCH arm64)
set(QUENFOLD_TRIPLET aarch64-linux-gnu)
set(QUENFOLD_QEMU qemu-aarch64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
