# One way to declare a module, a program and a test, so that the layers hold.
#
#   hv_module(NAME hv_text LAYER core SOURCES a.h a.cpp USES hv_files [LINKS JPEG::JPEG])
#   hv_program(NAME hv LAYER core SOURCES main.cpp USES ...)
#   hv_test(NAME text_test SOURCES A_Test.cpp USES hv_text [NEEDS_DISPLAY])
#
# Layers, low to high: plain (no Qt), core (QtCore), gui (QtGui), widgets (QtWidgets). A module uses modules that are
# declared before it and stand in its own layer or a lower one; anything else stops the configuration. SOURCES names
# the headers too: the include check learns from it which module a header belongs to.

set(hv_layers plain core gui widgets)
define_property(GLOBAL PROPERTY HV_MODULE_LINES)

set(hv_layer_library_core Qt6::Core)
set(hv_layer_library_gui Qt6::Core Qt6::Gui)
set(hv_layer_library_widgets Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Svg Qt6::PrintSupport)

function(_hv_check_uses name layer uses)
    list(FIND hv_layers "${layer}" own)
    if(own LESS 0)
        message(FATAL_ERROR "${name}: unknown layer '${layer}'")
    endif()
    foreach(used IN LISTS uses)
        if(NOT TARGET ${used})
            message(FATAL_ERROR "${name} uses ${used}, which is not declared before it")
        endif()
        get_target_property(used_layer ${used} HV_LAYER)
        list(FIND hv_layers "${used_layer}" theirs)
        if(theirs GREATER own)
            message(FATAL_ERROR "${name} (${layer}) may not use ${used} (${used_layer})")
        endif()
    endforeach()
endfunction()

# The headers that nearly every file of a layer includes are compiled once and shared: one set for modules and programs
# ("code"), one for tests, which are built with GoogleTest and other flags.
function(_hv_precompiled_headers layer kind)
    set(target hv_headers_${layer}_${kind})
    if(TARGET ${target})
        return()
    endif()
    file(WRITE ${CMAKE_BINARY_DIR}/${target}.cpp "// carries the precompiled headers of the ${layer} layer\n")
    add_library(${target} OBJECT ${CMAKE_BINARY_DIR}/${target}.cpp)
    target_link_libraries(${target} PUBLIC ${hv_layer_library_${layer}} tl::expected)
    set(headers <functional> <memory> <optional> <span> <string> <vector> <algorithm> <map> <tl/expected.hpp>)
    if(NOT layer STREQUAL "plain")
        list(APPEND headers <QtCore/QString> <QtCore/QStringList> <QtCore/QVector> <QtCore/QHash> <QtCore/QDateTime>
            <QtCore/QFile> <QtCore/QFileInfo> <QtCore/QDir> <QtCore/QVariant>)
    endif()
    if(layer STREQUAL "gui")
        list(APPEND headers <QtGui/QImage> <QtGui/QPainter>)
    elseif(layer STREQUAL "widgets")
        list(APPEND headers <QtWidgets/QtWidgets>)
    endif()
    if(kind STREQUAL "tests")
        list(APPEND headers <gtest/gtest.h>)
        _hv_test_flags(${target})
    endif()
    target_precompile_headers(${target} PRIVATE ${headers})
endfunction()

# What the sanitizers watch is the code under test; the tests themselves shall compile fast beside them.
function(_hv_test_flags name)
    target_link_libraries(${name} PRIVATE GTest::gtest)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # false alarms on std::string when it comes out of precompiled headers
        target_compile_options(${name} PRIVATE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
    if(HALVINE_SANITIZE)
        target_compile_options(${name} PRIVATE -O0 -g0 -fno-sanitize-address-use-after-scope)
    endif()
endfunction()

function(_hv_common name layer kind)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    set_target_properties(${name} PROPERTIES HV_LAYER ${layer})
    # The pixel library compiles its loops for several processors in one file, which g++ does not join with precompiled
    # headers.
    if(NOT (layer STREQUAL "plain" AND kind STREQUAL "code"))
        _hv_precompiled_headers(${layer} ${kind})
        target_precompile_headers(${name} REUSE_FROM hv_headers_${layer}_${kind})
        target_compile_options(${name} PRIVATE -fPIC) # as the precompiled headers, and as Qt asks
    endif()
    if(layer STREQUAL "gui" OR layer STREQUAL "widgets")
        set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    endif()
endfunction()

function(hv_module)
    cmake_parse_arguments(arg "" "NAME;LAYER" "SOURCES;USES;LINKS" ${ARGN})
    _hv_check_uses(${arg_NAME} "${arg_LAYER}" "${arg_USES}")
    add_library(${arg_NAME} STATIC ${arg_SOURCES})
    _hv_common(${arg_NAME} ${arg_LAYER} code)
    target_link_libraries(${arg_NAME} PUBLIC ${arg_USES} ${arg_LINKS} ${hv_layer_library_${arg_LAYER}} tl::expected)
    file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    list(TRANSFORM arg_SOURCES PREPEND "${folder}/" OUTPUT_VARIABLE files)
    list(JOIN files "," files)
    list(JOIN arg_USES "," uses)
    set_property(GLOBAL APPEND PROPERTY HV_MODULE_LINES "${arg_NAME}|${arg_LAYER}|${uses}|${files}")
endfunction()

function(hv_program)
    cmake_parse_arguments(arg "" "NAME;LAYER" "SOURCES;USES;LINKS" ${ARGN})
    _hv_check_uses(${arg_NAME} "${arg_LAYER}" "${arg_USES}")
    add_executable(${arg_NAME} ${arg_SOURCES})
    _hv_common(${arg_NAME} ${arg_LAYER} code)
    target_link_libraries(${arg_NAME} PRIVATE ${arg_USES} ${arg_LINKS} ${hv_layer_library_${arg_LAYER}} tl::expected)
endfunction()

# One executable holds the tests of one area and is one entry of ctest: thousands of small processes would take longer
# than the tests.
function(hv_test)
    cmake_parse_arguments(arg "NEEDS_DISPLAY" "NAME;LAYER;TIMEOUT" "SOURCES;USES;LINKS" ${ARGN})
    if(arg_NEEDS_DISPLAY AND NOT HALVINE_WINDOWS)
        return()
    endif()
    if(NOT arg_LAYER)
        set(arg_LAYER core)
        if(arg_NEEDS_DISPLAY)
            set(arg_LAYER widgets)
        endif()
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 600)
    endif()
    add_executable(${arg_NAME} ${arg_SOURCES})
    _hv_common(${arg_NAME} ${arg_LAYER} tests)
    _hv_test_flags(${arg_NAME})
    target_link_libraries(${arg_NAME} PRIVATE ${arg_USES} ${arg_LINKS} ${hv_layer_library_${arg_LAYER}} tl::expected
        GTest::gmock)
    if(arg_NEEDS_DISPLAY)
        target_link_libraries(${arg_NAME} PRIVATE Qt6::Test)
    else()
        target_link_libraries(${arg_NAME} PRIVATE GTest::gtest_main)
    endif()
    target_include_directories(${arg_NAME} PRIVATE ${CMAKE_BINARY_DIR}/generated)
    add_test(NAME ${arg_NAME} COMMAND ${arg_NAME})
    set_tests_properties(${arg_NAME} PROPERTIES TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1")
endfunction()

# For the include check: a line a module, NAME|LAYER|USES|FILES.
function(hv_write_module_list)
    get_property(lines GLOBAL PROPERTY HV_MODULE_LINES)
    list(JOIN lines "\n" text)
    file(WRITE ${CMAKE_BINARY_DIR}/modules.txt "${text}\n")
endfunction()
