# The header-only libraries of Debian's packages, linked into a folder of the build: the cross build must not see the
# rest of the system's include folder.
set(KZ_HEADER_ONLY_DIR ${CMAKE_BINARY_DIR}/header_only)
file(MAKE_DIRECTORY ${KZ_HEADER_ONLY_DIR})
foreach(library CLI nlohmann)
  if(NOT EXISTS /usr/include/${library})
    message(FATAL_ERROR "/usr/include/${library} is missing: ./kz installs what the build needs")
  endif()
  file(CREATE_LINK /usr/include/${library} ${KZ_HEADER_ONLY_DIR}/${library} SYMBOLIC)
endforeach()
