# Resources, compiled by windres on both builds.
#
# On Windows the compiled script is linked into the module. Elsewhere the same script becomes a PE image that
# holds nothing but resources, and the module carries that image's bytes; the headless loader reads both with
# one reader of the resource directory.

find_program(KZ_WINDRES NAMES x86_64-w64-mingw32-windres REQUIRED)
find_program(KZ_PE_LINKER NAMES x86_64-w64-mingw32-ld REQUIRED)

# kz_compile_resources(<object> <script> [DEPENDS file...]): a COFF object made of a resource script.
# The build's own C preprocessor runs over the script, so that the native build needs no cross compiler.
function(kz_compile_resources object script)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  get_filename_component(folder ${script} DIRECTORY)
  add_custom_command(OUTPUT ${object}
    COMMAND ${KZ_WINDRES} -c 65001 -O coff
            --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
            --preprocessor-arg=-DRC_INVOKED
            -I ${folder} -i ${script} -o ${object}
    DEPENDS ${script} ${arg_DEPENDS}
    VERBATIM)
endfunction()

# kz_resource_module(<target> <script> <output> [DEPENDS file...]): a resource-only DLL, the same file on both builds.
function(kz_resource_module target script output)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.res.o)
  kz_compile_resources(${object} ${script} DEPENDS ${arg_DEPENDS})
  get_filename_component(folder ${output} DIRECTORY)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${KZ_PE_LINKER} -shared --entry=0 -o ${output} ${object}
    DEPENDS ${object}
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()

# kz_add_resources(<target> <script> [DEPENDS file...]): gives a module its own resources.
function(kz_add_resources target script)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.res.o)
  kz_compile_resources(${object} ${script} DEPENDS ${arg_DEPENDS})
  if(WIN32)
    target_sources(${target} PRIVATE ${object})
    set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT TRUE GENERATED TRUE)
  else()
    set(image ${CMAKE_CURRENT_BINARY_DIR}/${target}.res.dll)
    add_custom_command(OUTPUT ${image}
      COMMAND ${KZ_PE_LINKER} -shared --entry=0 -o ${image} ${object}
      DEPENDS ${object}
      VERBATIM)
    set(carrier ${CMAKE_CURRENT_BINARY_DIR}/${target}.res.S)
    file(CONFIGURE OUTPUT ${carrier} CONTENT [[
# The module's own resources: the bytes of a PE image, found by name by the headless loader.
        .section .rodata
        .balign 16
        .global kz_module_resources
        .type kz_module_resources, @object
kz_module_resources:
        .incbin "@image@"
        .size kz_module_resources, . - kz_module_resources
        .balign 8
        .global kz_module_resources_size
        .type kz_module_resources_size, @object
kz_module_resources_size:
        .quad kz_module_resources_size - kz_module_resources
        .size kz_module_resources_size, 8
        .section .note.GNU-stack,"",@progbits
]] @ONLY)
    target_sources(${target} PRIVATE ${carrier})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE") # a program exports nothing unasked, and the loader finds exports only
      target_link_options(${target} PRIVATE
        LINKER:--export-dynamic-symbol=kz_module_resources LINKER:--export-dynamic-symbol=kz_module_resources_size)
    endif()
    set_source_files_properties(${carrier} PROPERTIES OBJECT_DEPENDS ${image})
  endif()
endfunction()
