kz_fuzzer(svg_fuzz svg_fuzz.cpp LIBS kzsvg)
kz_fuzzer(draw_fuzz draw_fuzz.cpp LIBS kzsvg)
