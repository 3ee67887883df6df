# Judges the hub's build options as configuring does, one cmake a row; run with -DSCRIPT=QuillmereHubOptions.cmake.

set(failures "")

# takes(base [ca]): the values are accepted.
function(takes base)
    execute_process(COMMAND ${CMAKE_COMMAND} -DQUILLMERE_HUB_BASE=${base} -DQUILLMERE_HUB_CA=${ARGN} -P ${SCRIPT}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
    if(NOT result EQUAL 0)
        set(failures "${failures}\n\"${base}\" with \"${ARGN}\" was refused" PARENT_SCOPE)
    endif()
endfunction()

# refuses(base ca words): the values are refused, and the message has these words.
function(refuses base ca words)
    execute_process(COMMAND ${CMAKE_COMMAND} -DQUILLMERE_HUB_BASE=${base} -DQUILLMERE_HUB_CA=${ca} -P ${SCRIPT}
        RESULT_VARIABLE result ERROR_VARIABLE message OUTPUT_QUIET)
    string(REGEX REPLACE "[ \n]+" " " message "${message}")
    string(FIND "${message}" "${words}" place)
    if(result EQUAL 0 OR place EQUAL -1)
        set(failures "${failures}\n\"${base}\" with \"${ca}\" gave ${result}: ${message}" PARENT_SCOPE)
    endif()
endfunction()

takes("https://localhost:17443")
takes("https://hub.example.org")
takes("https://hub-2.example.org:1")
takes("https://192.0.2.7:65535")
takes("https://[2001:db8::1]:8443")

set(no_origin "QUILLMERE_HUB_BASE must be an https origin without a path")
refuses("" "" "${no_origin}")
refuses("hub.example.org" "" "${no_origin}")
refuses("http://hub.example.org" "" "${no_origin}")
refuses("HTTPS://hub.example.org" "" "${no_origin}")
refuses("https://" "" "${no_origin}")
refuses("https://hub.example.org/" "" "${no_origin}")
refuses("https://hub.example.org/tv" "" "${no_origin}")
refuses("https://hub.example.org?x=1" "" "${no_origin}")
refuses("https://hub.example.org#x" "" "${no_origin}")
refuses("https://viewer@hub.example.org" "" "${no_origin}")
refuses("https://hub..example.org" "" "${no_origin}")
refuses("https://-hub.example.org" "" "${no_origin}")
refuses("https://hub example.org" "" "${no_origin}")
refuses("https://hub.example.org:" "" "${no_origin}")
refuses("https://hub.example.org:port" "" "${no_origin}")
refuses("https://hub.example.org:0" "" "must be 1 to 65535")
refuses("https://hub.example.org:65536" "" "must be 1 to 65535")
refuses("https://hub.example.org:4294967297" "" "must be 1 to 65535")

set(hub "https://hub.example.org")
refuses("${hub}" "/no/such/file.pem" "names a file that does not exist")
refuses("${hub}" "${CMAKE_CURRENT_LIST_DIR}" "names a file that does not exist")
refuses("${hub}" "${CMAKE_CURRENT_LIST_FILE}" "names a file without a PEM certificate")

if(failures)
    message(FATAL_ERROR "${failures}")
endif()
