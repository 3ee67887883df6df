# The order of the layers, seen to be refused by the compiler: each line compiles one #include with the include folders
# that a target's own sources get. A header that is no longer there fails its check, as refusing it would prove nothing.

function(quillmere_layer_check target verdict header)
    get_filename_component(bare_name ${header} NAME)
    set(name layer_${target}_${verdict}_${bare_name})
    if(NOT EXISTS ${PROJECT_SOURCE_DIR}/${header} OR NOT TARGET ${target})
        add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E false)
        set_tests_properties(${name} PROPERTIES LABELS unit)
        return()
    endif()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/layers/${target}_${bare_name}.cpp)
    file(GENERATE OUTPUT ${source} CONTENT "#include \"${bare_name}\"\n")
    set(folders "$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>")
    add_test(NAME ${name}
        COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -fPIC -fsyntax-only "-I$<JOIN:${folders},;-I>" ${source}
        COMMAND_EXPAND_LISTS)
    set_tests_properties(${name} PROPERTIES LABELS unit)
    if(verdict STREQUAL "refuses")
        set_tests_properties(${name} PROPERTIES PASS_REGULAR_EXPRESSION "${bare_name}'?:? (No such file|file not found)")
    endif()
endfunction()

quillmere_layer_check(http takes platform/tasks/CancelToken.h)
quillmere_layer_check(http refuses hub/HubAPI.h)
quillmere_layer_check(hub takes platform/http/HttpClient.h)
quillmere_layer_check(hub refuses catalogue/Store.h)
quillmere_layer_check(catalogue takes hub/HubAPI.h)
quillmere_layer_check(catalogue refuses front/StationPalette.h)
quillmere_layer_check(front takes catalogue/Store.h)
quillmere_layer_check(front refuses shop/ShelfList.h)
quillmere_layer_check(shop takes front/StationPalette.h)
quillmere_layer_check(shop refuses playback/TapePlayerController.h)
