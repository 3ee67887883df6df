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

# quillmere_test(name SOURCES ... LINKS ... [LABELS ...] [DISPLAY] [LOCK resource] [TIMEOUT seconds])
# Adds a test. With DISPLAY it runs on its own virtual display; without, on Qt's offscreen platform.
function(quillmere_test name)
    cmake_parse_arguments(arg "DISPLAY" "LOCK;TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
    if(NOT arg_LABELS)
        set(arg_LABELS unit)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} Qt6::Test)
    if("unit" IN_LIST arg_LABELS)
        add_dependencies(unit-tests ${name})
    endif()
    if(arg_DISPLAY)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/on-virtual-display $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endif()
    # Tests must not connect to the session bus of the desktop on which they run.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        "QT_QUICK_BACKEND=software" "DBUS_SESSION_BUS_ADDRESS=disabled:")
    if(QUILLMERE_SANITIZE MATCHES "thread")
        # Qt is not built with the sanitizer, so the sanitizer does not know Qt's locks.
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "TSAN_OPTIONS=ignore_noninstrumented_modules=1")
    endif()
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT})
    if(arg_LOCK)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK ${arg_LOCK})
    endif()
endfunction()
