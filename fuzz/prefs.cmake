kz_fuzzer(prefs_fuzz prefs_fuzz.cpp LIBS kzutil)
