# What hosts and plug-ins are built with: headers, the two static libraries, and how find_package(kzdraw) finds them.
set(headers_folder ${CMAKE_INSTALL_INCLUDEDIR}/kzdraw)

# The headers keep the names that the sources include them by.
function(install_headers root)
  cmake_parse_arguments(arg "" "" "FILES;EXCEPT" ${ARGN})
  foreach(pattern ${arg_FILES})
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${root} ${root}/${pattern})
    foreach(header ${headers})
      if(arg_EXCEPT AND header MATCHES "${arg_EXCEPT}")
        continue()
      endif()
      get_filename_component(folder ${header} DIRECTORY)
      install(FILES ${root}/${header} DESTINATION ${headers_folder}/${folder} COMPONENT development)
    endforeach()
  endforeach()
endfunction()
install_headers(${CMAKE_SOURCE_DIR}/host FILES *.h EXCEPT "canvas/cairo/|/res/")
install_headers(${CMAKE_SOURCE_DIR} FILES
  platform/winapi.h platform/afx/*.h platform/driver/*.h platform/headless/include/*.h formats/svg/reader.h formats/svg/writer.h)

# What the build tells every source is told to those who are built elsewhere.
target_include_directories(kzafx INTERFACE
  $<INSTALL_INTERFACE:${headers_folder}> $<INSTALL_INTERFACE:${headers_folder}/platform/headless/include>)
target_compile_definitions(kzafx INTERFACE $<INSTALL_INTERFACE:KZ_EXPORT=__attribute__\(\(visibility\("default"\)\)\)>)
target_compile_features(kzafx INTERFACE $<INSTALL_INTERFACE:cxx_std_20>)
# Else a plug-in with templates of static data could not be unloaded.
target_compile_options(kzafx INTERFACE $<INSTALL_INTERFACE:$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>>)

install(TARGETS kzsvg kzdriver kz_xml kz_zlib EXPORT kzdraw
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}/kzdraw COMPONENT development)
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/kzdraw)
install(EXPORT kzdraw FILE kzdrawTargets.cmake NAMESPACE kzdraw:: DESTINATION ${config_folder} COMPONENT development)

include(CMakePackageConfigHelpers)
set(plugins ${home}/Plugins)
configure_package_config_file(kzdrawConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/kzdrawConfig.cmake
  INSTALL_DESTINATION ${config_folder} PATH_VARS plugins)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/kzdrawConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kzdrawConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/kzdrawConfigVersion.cmake
  DESTINATION ${config_folder} COMPONENT development)

set(development_documents ${CMAKE_INSTALL_DATADIR}/doc/kzdraw-dev)
install(FILES ${CMAKE_SOURCE_DIR}/docs/embedding.md ${CMAKE_CURRENT_BINARY_DIR}/texts/copyright
  ${CMAKE_CURRENT_BINARY_DIR}/texts/changelog.Debian.gz
  DESTINATION ${development_documents} COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/samples/host ${CMAKE_SOURCE_DIR}/samples/plugin
  DESTINATION ${development_documents}/examples COMPONENT development)
