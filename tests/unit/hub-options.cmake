# Runs the check of the hub's build options, one cmake process for each case. Run with
# -DSCRIPT=QuillmereHubOptions.cmake.

set(failures "")

# accepts(base [ca]): expects that the values are accepted.
function(accepts base)
    execute_process(COMMAND ${CMAKE_COMMAND} -DQUILLMERE_HUB_BASE=${base} -DQUILLMERE_HUB_CA=${ARGN} -P ${SCRIPT}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
    if(NOT result EQUAL 0)
        set(failures "${failures}\n\"${base}\" with \"${ARGN}\" was rejected" PARENT_SCOPE)
    endif()
endfunction()

# rejects(base ca text): expects that the values are rejected with a message that contains the text.
function(rejects base ca text)
    execute_process(COMMAND ${CMAKE_COMMAND} -DQUILLMERE_HUB_BASE=${base} -DQUILLMERE_HUB_CA=${ca} -P ${SCRIPT}
        RESULT_VARIABLE result ERROR_VARIABLE message OUTPUT_QUIET)
    string(REGEX REPLACE "[ \n]+" " " message "${message}")
    string(FIND "${message}" "${text}" index)
    if(result EQUAL 0 OR index EQUAL -1)
        set(failures "${failures}\n\"${base}\" with \"${ca}\" gave ${result}: ${message}" PARENT_SCOPE)
    endif()
endfunction()

accepts("https://localhost:17443")
accepts("https://hub.example.org")
accepts("https://hub-2.example.org:1")
accepts("https://192.0.2.7:65535")
accepts("https://[2001:db8::1]:8443")

set(no_origin "QUILLMERE_HUB_BASE must be an https origin without a path")
rejects("" "" "${no_origin}")
rejects("hub.example.org" "" "${no_origin}")
rejects("http://hub.example.org" "" "${no_origin}")
rejects("HTTPS://hub.example.org" "" "${no_origin}")
rejects("https://" "" "${no_origin}")
rejects("https://hub.example.org/" "" "${no_origin}")
rejects("https://hub.example.org/tv" "" "${no_origin}")
rejects("https://hub.example.org?x=1" "" "${no_origin}")
rejects("https://hub.example.org#x" "" "${no_origin}")
rejects("https://viewer@hub.example.org" "" "${no_origin}")
rejects("https://hub..example.org" "" "${no_origin}")
rejects("https://-hub.example.org" "" "${no_origin}")
rejects("https://hub example.org" "" "${no_origin}")
rejects("https://hub.example.org:" "" "${no_origin}")
rejects("https://hub.example.org:port" "" "${no_origin}")
rejects("https://hub.example.org:0" "" "must be 1 to 65535")
rejects("https://hub.example.org:65536" "" "must be 1 to 65535")
rejects("https://hub.example.org:4294967297" "" "must be 1 to 65535")

set(hub "https://hub.example.org")
rejects("${hub}" "/no/such/file.pem" "names a file that does not exist")
rejects("${hub}" "${CMAKE_CURRENT_LIST_DIR}" "names a file that does not exist")
rejects("${hub}" "${CMAKE_CURRENT_LIST_FILE}" "names a file without a PEM certificate")

if(failures)
    message(FATAL_ERROR "${failures}")
endif()
