kz_fuzzer(archive_fuzz kzutil)
