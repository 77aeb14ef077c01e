# The libraries of others: kz_xml (pugixml), kz_zlib, kz_cairo and kz_codecs (libpng, libjpeg,
# giflib, libwebp).
#
# Natively they are Debian's packages. There are none for Windows: tools/windows-libraries builds the same versions
# from Debian's source packages, once for a machine.

add_library(kz_xml INTERFACE)
add_library(kz_zlib INTERFACE)
add_library(kz_cairo INTERFACE)
add_library(kz_codecs INTERFACE)

if(WIN32)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/windows-libraries
    OUTPUT_VARIABLE built OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "tools/windows-libraries failed: the Windows build needs its libraries")
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/windows-libraries)

  foreach(library kz_xml kz_cairo kz_codecs)
    target_include_directories(${library} SYSTEM INTERFACE ${built}/include)
  endforeach()
  target_link_libraries(kz_xml INTERFACE ${built}/lib/libpugixml.a)
  target_include_directories(kz_cairo SYSTEM INTERFACE ${built}/include/cairo)
  target_compile_definitions(kz_cairo INTERFACE CAIRO_WIN32_STATIC_BUILD)
  # cairo turns checked string functions on by itself; their library is linked in, else it would be one more DLL.
  execute_process(COMMAND ${CMAKE_C_COMPILER} -print-file-name=libssp.a
    OUTPUT_VARIABLE checked_strings OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  target_link_libraries(kz_cairo INTERFACE ${built}/lib/libcairo.a ${built}/lib/libpixman-1.a gdi32 msimg32 user32
    ${checked_strings})
  # Not the import library beside it: zlib would be one more DLL.
  target_link_libraries(kz_zlib INTERFACE ${CMAKE_FIND_ROOT_PATH}/lib/libz.a)
  target_link_libraries(kz_codecs INTERFACE ${built}/lib/libpng16.a ${built}/lib/libjpeg.a ${built}/lib/libgif.a
    ${built}/lib/libwebp.a kz_zlib)
else()
  find_package(pugixml REQUIRED)
  # The package's static library: reading a drawing makes dozens of its small calls for each object.
  if(TARGET pugixml::static)
    target_link_libraries(kz_xml INTERFACE pugixml::static)
  else()
    target_link_libraries(kz_xml INTERFACE pugixml::pugixml)
  endif()
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(cairo REQUIRED IMPORTED_TARGET pangocairo)
  target_link_libraries(kz_cairo INTERFACE PkgConfig::cairo)
  find_package(ZLIB REQUIRED)
  target_link_libraries(kz_zlib INTERFACE ZLIB::ZLIB)
  pkg_check_modules(codecs REQUIRED IMPORTED_TARGET libpng libjpeg libwebp libwebpdemux)
  # giflib has no description for pkg-config.
  find_package(GIF REQUIRED)
  target_link_libraries(kz_codecs INTERFACE PkgConfig::codecs GIF::GIF kz_zlib)
endif()
