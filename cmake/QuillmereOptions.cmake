# Build options of the set. The hub's address is fixed here, when the set is built: there is no setting at run time.

set(QUILLMERE_HUB_BASE "https://localhost:47443" CACHE STRING
    "The hub's https origin: scheme, host and optional port, no path. The default is the sample hub.")
set(QUILLMERE_HUB_CA "" CACHE FILEPATH
    "A PEM file, embedded and trusted beside the system's certificates, for JSON and for video alike.")
option(QUILLMERE_BUILD_DEMO "Build the sample hub" ON)
option(QUILLMERE_BUILD_TESTS "Build the tests and benchmarks" ON)
option(QUILLMERE_BUILD_FUZZERS "Build the libFuzzer targets (clang only)" OFF)
set(QUILLMERE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them: address,undefined or thread")

if(NOT QUILLMERE_HUB_BASE MATCHES "^https://([A-Za-z0-9.-]+|\\[[0-9A-Fa-f:.]+\\])(:[0-9]+)?$")
    message(FATAL_ERROR
        "QUILLMERE_HUB_BASE must be an https origin without a path, such as https://hub.example.org "
        "or https://localhost:47443, but it is \"${QUILLMERE_HUB_BASE}\".")
endif()
if(CMAKE_MATCH_2)
    string(SUBSTRING "${CMAKE_MATCH_2}" 1 -1 quillmere_hub_port)
    string(LENGTH "${quillmere_hub_port}" quillmere_hub_port_digits)
    if(quillmere_hub_port_digits GREATER 5 OR quillmere_hub_port EQUAL 0 OR quillmere_hub_port GREATER 65535)
        message(FATAL_ERROR "The port of QUILLMERE_HUB_BASE must be 1 to 65535, but it is ${quillmere_hub_port}.")
    endif()
endif()
if(QUILLMERE_HUB_CA AND NOT EXISTS "${QUILLMERE_HUB_CA}")
    message(FATAL_ERROR "QUILLMERE_HUB_CA names a file that does not exist: ${QUILLMERE_HUB_CA}")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
if(QUILLMERE_SANITIZE)
    add_compile_options(-fsanitize=${QUILLMERE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUILLMERE_SANITIZE})
endif()
if(QUILLMERE_BUILD_FUZZERS)
    # Everything is instrumented, so that the fuzzer sees which paths of the libraries an input takes.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
