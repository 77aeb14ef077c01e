# Settings that every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One folder that runs as it stands: programs and libraries side by side, plug-ins in Plugins/.
set(KZ_BIN_DIR ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${KZ_BIN_DIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${KZ_BIN_DIR})
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(KZ_CCACHE ccache)
if(KZ_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${KZ_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KZ_CCACHE})
endif()

add_library(kz_options INTERFACE)
target_compile_options(kz_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror>
  # GCC 12 sees overlapping copies in std::string's own operator+ (its bug 105651).
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
target_include_directories(kz_options INTERFACE
  ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/host ${CMAKE_SOURCE_DIR}/kzattribute)

if(WIN32)
  target_compile_definitions(kz_options INTERFACE
    UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0800 NOMINMAX
    "KZ_EXPORT=__attribute__((dllexport))")
  target_compile_options(kz_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-D_GLIBCXX_ASSERTIONS>)
else()
  target_include_directories(kz_options SYSTEM INTERFACE ${CMAKE_SOURCE_DIR}/platform/headless/include)
  target_compile_definitions(kz_options INTERFACE "KZ_EXPORT=__attribute__((visibility(\"default\")))")
  # Unique symbols would keep a plug-in in memory for ever: FreeLibrary must unload it, static objects and all.
  target_compile_options(kz_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
endif()

if(KZ_SANITIZE)
  set(KZ_SANITIZERS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(kz_options INTERFACE ${KZ_SANITIZERS} -D_GLIBCXX_ASSERTIONS)
  target_link_options(kz_options INTERFACE ${KZ_SANITIZERS})
endif()
if(KZ_SANITIZE_THREADS)
  target_compile_options(kz_options INTERFACE -fsanitize=thread)
  target_link_options(kz_options INTERFACE -fsanitize=thread)
endif()
if(KZ_FUZZ) # every library counts its branches; the fuzzers' own main comes with kz_fuzzer
  target_compile_options(kz_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fsanitize=fuzzer-no-link>)
endif()

link_libraries($<BUILD_INTERFACE:kz_options>) # what is installed is linked without it

if(WIN32)
  include(KzWindows)
endif()
