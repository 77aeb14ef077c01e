# kz_pugixml: the XML library, on both builds.
#
# Natively it is Debian's package. The package has no Windows library, so the cross build compiles the same version's
# one source file, which tools/fetch-pugixml takes from Debian's source package.

if(WIN32)
  set(KZ_PUGIXML_DIR ${CMAKE_SOURCE_DIR}/build/third_party/pugixml)
  if(NOT EXISTS ${KZ_PUGIXML_DIR}/src/pugixml.cpp)
    execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/fetch-pugixml RESULT_VARIABLE failed)
    if(failed)
      message(FATAL_ERROR "tools/fetch-pugixml failed: the Windows build needs the source file of pugixml")
    endif()
  endif()
  add_library(kz_pugixml STATIC ${KZ_PUGIXML_DIR}/src/pugixml.cpp)
  # Its own warnings are not ours to mend.
  set_target_properties(kz_pugixml PROPERTIES LINK_LIBRARIES "")
  target_compile_options(kz_pugixml PRIVATE -w)
  target_include_directories(kz_pugixml SYSTEM PUBLIC ${KZ_PUGIXML_DIR}/src)
else()
  find_package(pugixml REQUIRED)
  add_library(kz_pugixml INTERFACE)
  # The package's static library: reading a drawing makes dozens of its small calls for each object.
  if(TARGET pugixml::static)
    target_link_libraries(kz_pugixml INTERFACE pugixml::static)
  else()
    target_link_libraries(kz_pugixml INTERFACE pugixml::pugixml)
  endif()
endif()
