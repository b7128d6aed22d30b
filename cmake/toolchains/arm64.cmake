# 64-bit ARM, little-endian, plain char unsigned.
set(QUENFOLD_ARCH arm64)
set(QUENFOLD_TRIPLET aarch64-linux-gnu)
# Signed return addresses are checked by the emulator's own means: the architecture's cipher, emulated,
# takes nine tenths of the time of a unit test.
set(QUENFOLD_QEMU qemu-aarch64 -cpu max,pauth-impdef=on)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
