kz_fuzzer(svg_fuzz svg_fuzz.cpp LIBS kzsvg)
