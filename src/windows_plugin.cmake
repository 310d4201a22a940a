# The plug-in library TarvoSablemark.tpi for Windows: the core plus the Windows platform layer
# (src/win), linked statically, exporting PlugInMain and nothing else (plugin_exports.def).
file(GLOB_RECURSE BREVAN_WIN_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/win/*.cpp)
if(NOT BREVAN_WIN_SOURCES)
  message(STATUS "src/win holds no sources yet: TarvoSablemark.tpi is not built")
  return()
endif()
# What the core already holds of the layer stays out of the library.
list(REMOVE_ITEM BREVAN_WIN_SOURCES ${BREVAN_CORE_PLATFORM_SOURCES})
# The offline and upgrade pages and their pictures, as the library's resources.
enable_language(RC)
add_library(TarvoSablemark MODULE ${BREVAN_WIN_SOURCES}
  ${CMAKE_CURRENT_SOURCE_DIR}/win/page_resources.rc
  ${CMAKE_CURRENT_SOURCE_DIR}/plugin_exports.def)
set_target_properties(TarvoSablemark PROPERTIES PREFIX "" SUFFIX ".tpi" UNITY_BUILD ${BREVAN_UNITY})
# The system's two HTTP headers declare the same names differently: its WinHTTP client stays an
# object of its own, away from the downloader's header.
set_source_files_properties(${CMAKE_CURRENT_SOURCE_DIR}/win/winhttp_request.cpp
  PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
target_include_directories(TarvoSablemark PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/win
  ${CMAKE_CURRENT_SOURCE_DIR}/both ${PROJECT_SOURCE_DIR}/res)
target_link_libraries(TarvoSablemark PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,brevan_core>"
  JsonCpp::JsonCpp ${BREVAN_WIN_SYSTEM_LIBS})
# No name is exported for being merely defined: only those the .def file lists.
target_link_options(TarvoSablemark PRIVATE -Wl,--no-undefined -Wl,--exclude-all-symbols)
