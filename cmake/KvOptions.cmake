# Build options and the compiler flags of our own targets.

set(KV_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
option(KV_COVERAGE "Count the lines that run, for gcov" OFF)
option(KV_FUZZ "Build the fuzz targets with libFuzzer, which only clang brings" OFF)

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

# Float results are the same on every processor: none fuses a product and a sum into one rounding.
add_compile_options(-ffp-contract=off)

if(KV_SANITIZE)
    add_compile_options(-fsanitize=${KV_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${KV_SANITIZE})
endif()

if(KV_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# Everything is then instrumented for the fuzz engine, third-party sources too.
if(KV_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link -O2)
endif()

# Gives a target of our own the warnings that we hold to, all of them errors.
function(kv_own_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endfunction()
