# Cross-compiles for 32-bit Windows with Debian's MinGW-w64 compilers (posix threads), linking every
# program and library statically so that it needs no MinGW runtime beside it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(BREVAN_MINGW_TRIPLET i686-w64-mingw32)

include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
