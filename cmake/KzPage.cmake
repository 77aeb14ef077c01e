# The page of "kzdraw serve": bundled by esbuild, and put into the program as bytes.

find_program(KZ_ESBUILD esbuild REQUIRED)
set(KZ_LEAFLET /usr/share/javascript/leaflet)

# kz_add_page(<target> <folder>): adds the page of the folder to a library: index.html, icon.svg, app.css and the script
# that app.ts and what it imports become. The library of maps, "leaflet", is Debian's.
function(kz_add_page target folder)
  file(GLOB parts CONFIGURE_DEPENDS ${folder}/*)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/page)
  add_custom_command(OUTPUT ${made}/app.js ${made}/app.css
    COMMAND ${KZ_ESBUILD} ${folder}/app.ts --bundle --minify --format=esm --target=es2020 --charset=utf8
            --alias:leaflet=${KZ_LEAFLET}/leaflet.esm.js --outfile=${made}/app.js --log-level=warning
    COMMAND ${KZ_ESBUILD} ${folder}/app.css --bundle --minify --charset=utf8 --loader:.png=dataurl
            --alias:leaflet=${KZ_LEAFLET} --outfile=${made}/app.css --log-level=warning
    DEPENDS ${parts}
    VERBATIM)
  set(carrier ${made}/page.S)
  file(CONFIGURE OUTPUT ${carrier} CONTENT [[
# The files of the page, as bytes.
        .section .rodata
        .global kz_page_html, kz_page_html_end, kz_page_script, kz_page_script_end
        .global kz_page_style, kz_page_style_end, kz_page_icon, kz_page_icon_end
kz_page_html:
        .incbin "@folder@/index.html"
kz_page_html_end:
        .byte 0
kz_page_script:
        .incbin "@made@/app.js"
kz_page_script_end:
        .byte 0
kz_page_style:
        .incbin "@made@/app.css"
kz_page_style_end:
        .byte 0
kz_page_icon:
        .incbin "@folder@/icon.svg"
kz_page_icon_end:
        .byte 0
        .section .note.GNU-stack,"",@progbits
]] @ONLY)
  target_sources(${target} PRIVATE ${carrier})
  set_source_files_properties(${carrier} PROPERTIES
    OBJECT_DEPENDS "${made}/app.js;${made}/app.css;${folder}/index.html;${folder}/icon.svg")
endfunction()
