# Functions that create the targets. The include folder of a library is its source folder, so only targets that link the
# library find its headers. An include against the order of the layers does not compile.

function(quillmere_precompile name)
    target_precompile_headers(${name} PRIVATE <QtCore/QtCore> <QCoroTask> <tl/expected.hpp>)
endfunction()

# quillmere_library(name SOURCES ... LINKS ...): adds a static library without QML types.
function(quillmere_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LINKS})
    quillmere_precompile(${name})
endfunction()

# quillmere_module(name URI Quillmere.X SOURCES ... QML ... IMPORTS ... LINKS ...): adds a static library with a QML
# module.
function(quillmere_module name)
    cmake_parse_arguments(arg "" "URI" "SOURCES;QML;IMPORTS;LINKS" ${ARGN})
    string(REPLACE "." "/" path ${arg_URI})
    qt_add_qml_module(${name}
        STATIC
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${path}
        IMPORT_PATH ${PROJECT_BINARY_DIR}/qml
        DEPENDENCIES QtQuick
        IMPORTS ${arg_IMPORTS}
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML}
    )
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    # A target that links the module also links its QML plug-in, so it can import the module.
    target_link_libraries(${name} PUBLIC Qt6::Quick ${arg_LINKS} INTERFACE ${name}plugin)
    quillmere_precompile(${name})
endfunction()

# Builds only the tests with the label unit and their dependencies. The sanitizer runs use it.
add_custom_target(unit-tests)

# quillmere_tests(name TESTS ... [SOURCES ...] LINKS ... [LABELS ...] [DISPLAY ...] [TIMEOUT seconds] [LOCK resource]):
# adds one program with the test classes TESTS, each from the file of its name, and a test for each class, which runs
# `name CLASS`. The classes after DISPLAY run on a virtual display of their own, the others on Qt's offscreen platform.
function(quillmere_tests name)
    cmake_parse_arguments(arg "" "LOCK;TIMEOUT" "TESTS;SOURCES;LINKS;LABELS;DISPLAY" ${ARGN})
    if(NOT arg_LABELS)
        set(arg_LABELS unit)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    set(slowdown 1)
    if(QUILLMERE_SANITIZE)
        set(slowdown 5)
    endif()
    math(EXPR arg_TIMEOUT "${slowdown} * ${arg_TIMEOUT}")
    list(TRANSFORM arg_TESTS APPEND .cpp OUTPUT_VARIABLE files)
    add_executable(${name} ${files} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE test-main ${arg_LINKS})
    target_compile_definitions(${name} PRIVATE QUILLMERE_SLOWDOWN=${slowdown})
    target_precompile_headers(${name} PRIVATE <QtCore/QtCore> <QtTest/QtTest> <QCoroTask> <tl/expected.hpp>)
    if("unit" IN_LIST arg_LABELS)
        add_dependencies(unit-tests ${name})
    endif()
    foreach(test IN LISTS arg_TESTS)
        if(test IN_LIST arg_DISPLAY)
            add_test(NAME ${test}
                COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on-virtual-display $<TARGET_FILE:${name}> ${test})
            if(QUILLMERE_SANITIZE MATCHES "address")
                # Without strict string checks, which fail in libxkbcommon-x11.
                set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1")
            endif()
        else()
            add_test(NAME ${test} COMMAND ${name} ${test})
            set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
        endif()
        # No test announces its playback to the desktop of the machine.
        set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT
            "QT_QUICK_BACKEND=software" "DBUS_SESSION_BUS_ADDRESS=disabled:")
        if(QUILLMERE_SANITIZE MATCHES "thread")
            # Qt is not built with the thread sanitizer, which therefore does not see its locks.
            set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT "TSAN_OPTIONS=ignore_noninstrumented_modules=1")
        endif()
        set_tests_properties(${test} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT})
        if(arg_LOCK)
            set_tests_properties(${test} PROPERTIES RESOURCE_LOCK ${arg_LOCK})
        endif()
    endforeach()
endfunction()

# quillmere_opengl_test(name PROGRAM program CLASS class [FUNCTIONS ...] LABELS label TIMEOUT seconds): adds a test that
# runs a class once more, with software OpenGL on a virtual display.
function(quillmere_opengl_test name)
    cmake_parse_arguments(arg "" "PROGRAM;CLASS;LABELS;TIMEOUT" "FUNCTIONS" ${ARGN})
    add_test(NAME ${name}
        COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on-virtual-display $<TARGET_FILE:${arg_PROGRAM}> ${arg_CLASS}
            ${arg_FUNCTIONS})
    set(environment QSG_RHI_BACKEND=opengl LIBGL_ALWAYS_SOFTWARE=1)
    if(QUILLMERE_SANITIZE)
        math(EXPR arg_TIMEOUT "5 * ${arg_TIMEOUT}")
        # The drivers leak, and are unloaded before the sanitizer reports them, so no suppression can name them.
        list(APPEND environment ASAN_OPTIONS=detect_leaks=0)
    endif()
    set_tests_properties(${name} PROPERTIES LABELS ${arg_LABELS} TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "${environment}")
endfunction()
