# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 compilers (posix threads), linking every
# program and library statically so that it needs no MinGW runtime beside it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(BREVAN_MINGW_TRIPLET x86_64-w64-mingw32)

include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
