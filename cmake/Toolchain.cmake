# Compiler, flags and the libraries that come from the system.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# "Dev": fast enough for picture tests, quick to build, asserts on.
set(CMAKE_CXX_FLAGS_DEV "-O1 -g1" CACHE STRING "Flags of the Dev build type" FORCE)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "Flags of the Release build type" FORCE)

find_program(CCACHE ccache)
if(CCACHE)
    # Precompiled headers are only cached with these two settings.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized) # false alarms on std::optional of Qt types
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CCACHE)
    add_compile_options(-fpch-preprocess)
endif()
if(HALVINE_WERROR)
    add_compile_options(-Werror)
endif()
if(HALVINE_SANITIZE)
    add_compile_options(-fsanitize=${HALVINE_SANITIZE} -fno-omit-frame-pointer)
    if(NOT HALVINE_FUZZ)
        add_compile_options(-fno-sanitize-recover=all)
    endif()
    add_link_options(-fsanitize=${HALVINE_SANITIZE})
endif()

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(JPEG REQUIRED)
find_package(TIFF REQUIRED)
find_package(TBB REQUIRED)
find_package(tl-expected REQUIRED)
pkg_check_modules(HWY REQUIRED IMPORTED_TARGET libhwy)
pkg_check_modules(MD REQUIRED IMPORTED_TARGET libmd)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui)
if(HALVINE_WINDOWS)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets PrintSupport Svg)
endif()
