# What makes a memory error harder to use against the user, in what users run; read back from the program by
# tests/packaging/hardening_test.py. The branch protection is compiled into our own code; a program is marked
# with it only where all libraries that it loads have it too, so no mark is forced.
# Source: Debian's dpkg-buildflags(1), "hardening".
if(APPLE)  # where the compiler does all of it by itself
  return()
endif()
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
string(APPEND CMAKE_CXX_FLAGS_RELEASE " -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -fcf-protection")
elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -mbranch-protection=standard")
endif()
string(APPEND CMAKE_EXE_LINKER_FLAGS_RELEASE " -Wl,-z,relro,-z,now")
