kz_fuzzer(archive_fuzz archive_fuzz.cpp LIBS kzutil)
