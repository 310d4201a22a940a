# The plug-in library TarvoSablemark.tpi for Windows: the core plus the Windows platform layer
# (src/win), linked statically, exporting PlugInMain and nothing else (plugin_exports.def).
file(GLOB_RECURSE BREVAN_WIN_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/win/*.cpp)
if(NOT BREVAN_WIN_SOURCES)
  message(STATUS "src/win holds no sources yet: TarvoSablemark.tpi is not built")
  return()
endif()
add_library(TarvoSablemark MODULE ${BREVAN_WIN_SOURCES}
  ${CMAKE_CURRENT_SOURCE_DIR}/plugin_exports.def)
set_target_properties(TarvoSablemark PROPERTIES PREFIX "" SUFFIX ".tpi" UNITY_BUILD ${BREVAN_UNITY})
target_include_directories(TarvoSablemark PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/win
  ${CMAKE_CURRENT_SOURCE_DIR}/both)
target_link_libraries(TarvoSablemark PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,brevan_core>"
  JsonCpp::JsonCpp ${BREVAN_WIN_SYSTEM_LIBS})
# No name is exported for being merely defined: only those the .def file lists.
target_link_options(TarvoSablemark PRIVATE -Wl,--no-undefined -Wl,--exclude-all-symbols)
