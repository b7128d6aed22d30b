# Shared by the toolchain files: Debian's cross compiler, libraries unpacked by
# scripts/setup-cross, and the user-mode emulator, which needs no registration in the kernel, where
# the toolchain file names one.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${QUENFOLD_TRIPLET}-g++)
if(DEFINED QUENFOLD_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QUENFOLD_QEMU};-L;/usr/${QUENFOLD_TRIPLET})
endif()

cmake_path(SET QUENFOLD_SYSROOT NORMALIZE
           "${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/${QUENFOLD_ARCH}")
set(CMAKE_FIND_ROOT_PATH ${QUENFOLD_SYSROOT} /usr/${QUENFOLD_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
