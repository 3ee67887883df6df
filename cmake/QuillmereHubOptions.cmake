# Checks the build options of the hub. QuillmereOptions includes this file. A test runs it as a script:
#     cmake -DQUILLMERE_HUB_BASE=... -DQUILLMERE_HUB_CA=... -P QuillmereHubOptions.cmake

set(quillmere_label "[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?")
set(quillmere_host "(${quillmere_label}(\\.${quillmere_label})*|\\[[0-9A-Fa-f:.]+\\])")
if(NOT QUILLMERE_HUB_BASE MATCHES "^https://${quillmere_host}(:[0-9]+)?$")
    message(FATAL_ERROR
        "QUILLMERE_HUB_BASE must be an https origin without a path, such as https://hub.example.org "
        "or https://localhost:17443, but it is \"${QUILLMERE_HUB_BASE}\".")
endif()
if(QUILLMERE_HUB_BASE MATCHES ":([0-9]+)$")
    set(quillmere_port "${CMAKE_MATCH_1}")
    string(LENGTH "${quillmere_port}" quillmere_port_digits)
    if(quillmere_port_digits GREATER 5 OR quillmere_port EQUAL 0 OR quillmere_port GREATER 65535)
        message(FATAL_ERROR "The port of QUILLMERE_HUB_BASE must be 1 to 65535, but it is ${quillmere_port}.")
    endif()
endif()
if(NOT "${QUILLMERE_HUB_CA}" STREQUAL "")
    if(NOT EXISTS "${QUILLMERE_HUB_CA}" OR IS_DIRECTORY "${QUILLMERE_HUB_CA}")
        message(FATAL_ERROR "QUILLMERE_HUB_CA names a file that does not exist: ${QUILLMERE_HUB_CA}")
    endif()
    file(STRINGS "${QUILLMERE_HUB_CA}" quillmere_certificates REGEX "^-----BEGIN CERTIFICATE-----" LIMIT_COUNT 1)
    if(NOT quillmere_certificates)
        message(FATAL_ERROR "QUILLMERE_HUB_CA names a file without a PEM certificate: ${QUILLMERE_HUB_CA}")
    endif()
endif()
