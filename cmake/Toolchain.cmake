# Warnings, sanitizers and the compiler cache, for every target alike.

find_package(Threads REQUIRED)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # What one checkout has compiled serves every other one.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

# What is compiled once only, as by ./test and ./run, takes a fraction of the time so. Whoever changes files one at a
# time is better off without.
if(WREN_UNITY)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # It takes for a header what is included, and these sources are.
        add_compile_options(-Wno-subobject-linkage)
    endif()
endif()

add_compile_options(-Wall -Wextra)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # the other's notion of it is a different one
    add_compile_options(-Wconversion)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It warns of overlaps inside its own strings that are not there.
    add_compile_options(-Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # It takes a fold of one comparison for one in too many parentheses.
    add_compile_options(-Wno-parentheses-equality)
endif()
if(WREN_WERROR)
    add_compile_options(-Werror)
endif()

if(WREN_SANITIZE)
    add_compile_options(-fsanitize=${WREN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${WREN_SANITIZE})
endif()
