# The tests of the Windows build. Each program runs once as a whole under wine (the toolchain's
# emulator): starting wine per test case costs far more than the cases themselves.
add_test(NAME unit_tests COMMAND unit_tests)
# GCC 12 reports std::wstring's own copies as out of bounds once inlined into the tests (its bug
# 105329, as for the integration tests on Linux); the check stays on elsewhere.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(unit_tests PRIVATE -Wno-array-bounds -Wno-stringop-overflow
    -Wno-stringop-overread)
endif()

# The Windows platform layer's tests and the test host, once their folders hold them.
foreach(folder win test_host)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt)
    add_subdirectory(${folder})
  endif()
endforeach()

# The plug-in library exports PlugInMain and no other name.
if(TARGET TarvoSablemark)
  add_test(NAME PluginExportsOnlyPlugInMain
    COMMAND bash ${PROJECT_SOURCE_DIR}/scripts/check-windows-exports.sh
      $<TARGET_FILE:TarvoSablemark> ${CMAKE_OBJDUMP})
endif()
