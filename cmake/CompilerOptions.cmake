set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat -Werror=format-security -Werror)
# Optimising, GCC 12 sees overlaps inside std::string's operator+ that are not there (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()

# Nothing compiled reveals where the sources were, so that it is the same from any checkout.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=")

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # When files are compiled as one, it mistakes the included ones, .cpp files, for headers.
  add_compile_options(-Wno-subobject-linkage)
endif()

include("${CMAKE_CURRENT_LIST_DIR}/Hardening.cmake")

option(ORVE_SANITIZE "Build with Clang's address and undefined-behaviour sanitizers, and the fuzzers with libFuzzer" OFF)
if(ORVE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
