# What makes of a fault in the program an orderly end instead of a way in, for what is shipped.
# tests/check-hardening looks for each of these in the program that comes out.
set(QUENFOLD_HARDENING
    # Loaded at an address that nobody knows beforehand.
    -fPIE
    # An overwritten return address ends the run; a large frame cannot skip the stack's guard page.
    -fstack-protector-strong
    -fstack-clash-protection
    # The two libraries check indices and buffers. A level that the compiler sets itself goes first.
    -D_GLIBCXX_ASSERTIONS
    -U_FORTIFY_SOURCE
    -D_FORTIFY_SOURCE=3)
# Calls and returns end only where they may.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|i686)$")
  list(APPEND QUENFOLD_HARDENING -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
  list(APPEND QUENFOLD_HARDENING -mbranch-protection=standard)
endif()

add_library(quenfold_hardening INTERFACE)
target_compile_options(quenfold_hardening INTERFACE "$<$<CONFIG:Release>:${QUENFOLD_HARDENING}>")
# The loader binds every function before the program starts, and what it wrote is read-only then.
target_link_options(quenfold_hardening INTERFACE
                    "$<$<CONFIG:Release>:-pie;LINKER:-z,relro,-z,now,-z,noexecstack>")
