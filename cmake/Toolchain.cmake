# Warnings, sanitizers and the compiler cache, for all targets.

find_package(Threads REQUIRED)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # All checkouts share one compiler cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

# A build from scratch, as by ./test and ./run, takes a fraction of the time this way. For changes to single files it
# is slower.
if(WREN_UNITY)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # It takes included files for headers, and a unity build includes sources.
        add_compile_options(-Wno-subobject-linkage)
    endif()
endif()

add_compile_options(-Wall -Wextra)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # clang defines it differently
    add_compile_options(-Wconversion)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It gives false warnings of overlaps inside its own strings.
    add_compile_options(-Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # It takes a fold of a single comparison for redundant parentheses.
    add_compile_options(-Wno-parentheses-equality)
endif()
if(WREN_WERROR)
    add_compile_options(-Werror)
endif()

if(WREN_SANITIZE)
    add_compile_options(-fsanitize=${WREN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${WREN_SANITIZE})
endif()
