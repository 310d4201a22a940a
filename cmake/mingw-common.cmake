# The part of the MinGW-w64 toolchain files that both targets share. Libraries and packages are
# looked up only in the compiler's sysroot and in the dependency folder BREVAN_WIN_DEPS (jsoncpp
# and GoogleTest built for the target by scripts/windows-deps.sh), never among the build
# machine's own.
set(CMAKE_C_COMPILER ${BREVAN_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${BREVAN_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${BREVAN_MINGW_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${BREVAN_MINGW_TRIPLET})
if(NOT BREVAN_WIN_DEPS AND DEFINED ENV{BREVAN_WIN_DEPS})
  set(BREVAN_WIN_DEPS "$ENV{BREVAN_WIN_DEPS}")
endif()
if(BREVAN_WIN_DEPS)
  list(APPEND CMAKE_FIND_ROOT_PATH "${BREVAN_WIN_DEPS}")
endif()
# Test projects that CMake compiles while configuring see the same folders.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BREVAN_WIN_DEPS)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

# Test programs run under wine, whose launcher picks the 32- or 64-bit loader for each program.
find_program(BREVAN_WINE NAMES wine wine64)
if(BREVAN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${BREVAN_WINE}")
endif()
