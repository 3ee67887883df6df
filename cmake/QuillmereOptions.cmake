# Build options. The hub's address is fixed at build time; there is no setting at run time.

# The default port is below the system's range of ephemeral ports, so no other program gets it by chance.
set(QUILLMERE_HUB_BASE "https://localhost:17443" CACHE STRING
    "The hub's https origin: scheme, host and optional port, no path. The default is the sample hub.")
set(QUILLMERE_HUB_CA "" CACHE FILEPATH
    "A PEM file that is embedded and trusted in addition to the system's certificates, for JSON and for video.")
set(QUILLMERE_DISPLAY_SLEEP 0 CACHE STRING
    "Minutes without a key press and without playback until the display is switched off; 0 for never. \
The environment variable of this name overrides it.")
option(QUILLMERE_BUILD_DEMO "Build the sample hub" ON)
option(QUILLMERE_BUILD_TESTS "Build the tests and benchmarks" ON)
option(QUILLMERE_BUILD_FUZZERS "Build the libFuzzer targets (clang only)" OFF)
set(QUILLMERE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them: address,undefined or thread")

include(QuillmereHubOptions)
if(NOT QUILLMERE_DISPLAY_SLEEP MATCHES "^[0-9]+$")
    message(FATAL_ERROR "QUILLMERE_DISPLAY_SLEEP must be a number of minutes, but it is \"${QUILLMERE_DISPLAY_SLEEP}\".")
endif()

add_compile_options(-Wall -Wextra -Wpedantic)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
if(QUILLMERE_SANITIZE)
    add_compile_options(-fsanitize=${QUILLMERE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUILLMERE_SANITIZE})
endif()
if(QUILLMERE_BUILD_FUZZERS)
    # All code is instrumented, so that the fuzzer measures the coverage of the libraries too.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
