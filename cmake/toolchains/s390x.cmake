# Big-endian, 64 bits, plain char unsigned.
set(QUENFOLD_ARCH s390x)
set(QUENFOLD_TRIPLET s390x-linux-gnu)
set(QUENFOLD_QEMU qemu-s390x)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_LIBRARY_ARCHITECTURE s390x-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
