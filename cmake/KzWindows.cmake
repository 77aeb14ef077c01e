# What only the Windows build needs.

# The compiler's runtime is linked shared everywhere, so that exceptions and run-time types cross our DLLs; its DLLs
# stand beside the programs.
foreach(runtime libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}.dll
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT IS_ABSOLUTE ${path})
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${runtime}.dll")
  endif()
  file(COPY ${path} DESTINATION ${KZ_BIN_DIR} FOLLOW_SYMLINK_CHAIN)
endforeach()

# The tests' Wine session: begun before the first of them, ended after the last, so that a run leaves nothing behind.
# kz_test lists every test program under this fixture.
function(kz_add_wine_session)
  foreach(step start stop)
    add_test(NAME wine_session_${step} COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-session ${step})
  endforeach()
  set_tests_properties(wine_session_start PROPERTIES FIXTURES_SETUP wine_session TIMEOUT 300)
  set_tests_properties(wine_session_stop PROPERTIES FIXTURES_CLEANUP wine_session)
endfunction()
