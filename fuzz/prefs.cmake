kz_fuzzer(prefs_fuzz prefs_fuzz.cpp LIBS kzutil)
# The tests' support is included as tests include it.
target_include_directories(prefs_fuzz PRIVATE ${CMAKE_SOURCE_DIR}/tests)
