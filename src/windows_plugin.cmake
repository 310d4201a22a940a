# The plug-in library TarvoSablemark.tpi for Windows: the core plus the Windows platform layer
# (src/win), linked statically, exporting PlugInMain and nothing else (plugin_exports.def).
file(GLOB_RECURSE BREVAN_WIN_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/win/*.cpp)
if(NOT BREVAN_WIN_SOURCES)
  message(STATUS "src/win holds no sources yet: TarvoSablemark.tpi is not built")
  return()
endif()
# The platform's answers that the core already holds are left out.
list(REMOVE_ITEM BREVAN_WIN_SOURCES ${BREVAN_CORE_PLATFORM_SOURCES})
add_library(TarvoSablemark MODULE ${BREVAN_WIN_SOURCES} ${CMAKE_CURRENT_SOURCE_DIR}/win/page_resources.rc
  ${CMAKE_CURRENT_SOURCE_DIR}/plugin_exports.def)
# File by file: the layer's files hold file-local helpers of the same names and include system
# headers that cannot share a translation unit (the two HTTP clients' headers).
set_target_properties(TarvoSablemark PROPERTIES PREFIX "" SUFFIX ".tpi" UNITY_BUILD OFF)
target_include_directories(TarvoSablemark PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/win
  ${CMAKE_CURRENT_SOURCE_DIR}/both ${PROJECT_SOURCE_DIR}/res)
target_link_libraries(TarvoSablemark PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,brevan_core>"
  JsonCpp::JsonCpp ${BREVAN_WIN_SYSTEM_LIBS})
# No name is exported for being merely defined: only those the .def file lists.
target_link_options(TarvoSablemark PRIVATE -Wl,--no-undefined -Wl,--exclude-all-symbols)
