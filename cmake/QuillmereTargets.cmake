# How this tree makes its targets. A target's include folder is its own folder, so a header is found only by those
# that link its library: an include against the order of the layers does not compile.

function(quillmere_precompile name)
    target_precompile_headers(${name} PRIVATE <QtCore/QtCore> <QCoroTask> <tl/expected.hpp>)
endfunction()

# quillmere_library(name SOURCES ... LINKS ...): a static library without QML types.
function(quillmere_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LINKS})
    quillmere_precompile(${name})
endfunction()

# quillmere_module(name URI Quillmere.X SOURCES ... QML ... IMPORTS ... LINKS ...): a static library and its QML module.
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
    # Linking a module links its plug-in too, so that whoever sees its headers can also import it.
    target_link_libraries(${name} PUBLIC Qt6::Quick ${arg_LINKS} INTERFACE ${name}plugin)
    quillmere_precompile(${name})
endfunction()

# Builds the tests labelled unit and what they need, and nothing else: all that a sanitizer's run wants.
add_custom_target(unit-tests)

# quillmere_opengl_test(name label timeout COMMAND...): runs a command with the OpenGL render path on a virtual display.
function(quillmere_opengl_test name label timeout)
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on-virtual-display ${ARGN})
    set(environment QSG_RHI_BACKEND=opengl LIBGL_ALWAYS_SOFTWARE=1)
    if(QUILLMERE_SANITIZE)
        math(EXPR timeout "5 * ${timeout}")
        # The drivers leak, and are unloaded before the report, so that no suppression can name them.
        list(APPEND environment ASAN_OPTIONS=detect_leaks=0)
    endif()
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT ${timeout} ENVIRONMENT "${environment}")
endfunction()

# quillmere_test(name SOURCES ... LINKS ... [LABELS ...] [DISPLAY] [LOCK resource] [TIMEOUT seconds])
# DISPLAY runs it on a virtual display of its own; other tests use Qt's offscreen platform.
function(quillmere_test name)
    cmake_parse_arguments(arg "DISPLAY" "LOCK;TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
    if(NOT arg_LABELS)
        set(arg_LABELS unit)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    # Limits of time are multiplied by this.
    set(slowdown 1)
    if(QUILLMERE_SANITIZE)
        set(slowdown 5)
    endif()
    math(EXPR arg_TIMEOUT "${slowdown} * ${arg_TIMEOUT}")
    add_executable(${name} ${arg_SOURCES})
    target_compile_definitions(${name} PRIVATE QUILLMERE_SLOWDOWN=${slowdown})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} Qt6::Test)
    if("unit" IN_LIST arg_LABELS)
        add_dependencies(unit-tests ${name})
    endif()
    if(arg_DISPLAY)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on-virtual-display $<TARGET_FILE:${name}>)
        if(QUILLMERE_SANITIZE)
            # Without strict string checks, which stop every program in libxkbcommon-x11.
            set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1")
        endif()
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endif()
    # No test tells the desktop that it runs on of what it plays.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        "QT_QUICK_BACKEND=software" "DBUS_SESSION_BUS_ADDRESS=disabled:")
    if(QUILLMERE_SANITIZE MATCHES "thread")
        # Qt is not built with the sanitizer, which so cannot see its locks.
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "TSAN_OPTIONS=ignore_noninstrumented_modules=1")
    endif()
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT})
    if(arg_LOCK)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK ${arg_LOCK})
    endif()
endfunction()
