# Each folder is a target, and its link list is its permission to include.
#
# A folder's headers are reached only through its "wall": a directory in the build tree that holds nothing but a link to
# that folder. A target sees the walls of the folders it links and no others, so an include that runs up the floors does
# not compile.

# wren_wall(<target> <path in the source tree>): lets users of 'target' include <path>/... by its full name.
function(wren_wall target path)
    set(wall ${CMAKE_BINARY_DIR}/walls/${target})
    get_filename_component(parent ${wall}/${path} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${path} ${wall}/${path} SYMBOLIC)
    set_property(TARGET ${target} APPEND PROPERTY WREN_WALLS ${path})
    get_target_property(kind ${target} TYPE)
    if(kind STREQUAL "INTERFACE_LIBRARY")
        target_include_directories(${target} INTERFACE ${wall})
    else()
        target_include_directories(${target} PUBLIC ${wall})
    endif()
endfunction()

# wren_folder(<target> <folder> USES <targets>...): all sources of the folder except a main.cpp, as objects that its
# users link.
function(wren_folder target folder)
    cmake_parse_arguments(F "" "" "USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(sources)
        add_library(${target} OBJECT ${sources})
        target_link_libraries(${target} PUBLIC ${F_USES})
    else()
        add_library(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE ${F_USES})
    endif()
    wren_wall(${target} ${folder})
endfunction()

# wren_archive(<target> <folder> USES <targets>...): the same as an archive, for a folder so low that some of its users
# cannot name it: they get it through the targets that they link.
function(wren_archive target folder)
    cmake_parse_arguments(F "" "" "USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    if(sources)
        add_library(${target} STATIC ${sources})
        target_link_libraries(${target} PUBLIC ${F_USES})
    else()
        add_library(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE ${F_USES})
    endif()
    wren_wall(${target} ${folder})
endfunction()

# wren_compile_alone(<files>...): a unity build (WREN_UNITY) compiles these files separately, since neighbours use the
# same private names. They belong to the current directory's targets, and are given by their paths in the source tree.
function(wren_compile_alone)
    list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# Tests keep their records of tags files in the build tree, out of the user's cache.
set(TEST_CACHE XDG_CACHE_HOME=set:${CMAKE_BINARY_DIR}/tests/cache)

# wren_tests(<name> USES <targets>...): a test program from the sources of the current directory; each case is a CTest
# test.
function(wren_tests name)
    cmake_parse_arguments(F "" "" "USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${F_USES} test_support GTest::gtest GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
        PROPERTIES ENVIRONMENT_MODIFICATION ${TEST_CACHE})
endfunction()

# wren_write_targets(<file>): all targets of the directories so far, for tests/tools/includes-test: a line each with its
# name, type, walls, links and sources, tabs between them.
function(wren_write_targets file)
    file(WRITE ${file} "")
    wren_append_targets(${file} ${CMAKE_SOURCE_DIR})
endfunction()

function(wren_append_targets file directory)
    get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "UTILITY")
            continue()
        endif()
        set(links INTERFACE_LINK_LIBRARIES)
        if(type STREQUAL "EXECUTABLE" OR type STREQUAL "MODULE_LIBRARY")
            set(links LINK_LIBRARIES)
        endif()
        set(line "${target}\t${type}")
        foreach(property WREN_WALLS ${links} SOURCES)
            get_property(values TARGET ${target} PROPERTY ${property})
            set(shown "")
            foreach(value ${values})
                if(TARGET "${value}")
                    get_target_property(aliased ${value} ALIASED_TARGET)
                    if(aliased)
                        set(value ${aliased})
                    endif()
                endif()
                if(property STREQUAL "SOURCES")
                    cmake_path(ABSOLUTE_PATH value BASE_DIRECTORY ${directory} NORMALIZE)
                    cmake_path(RELATIVE_PATH value BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
                endif()
                string(APPEND shown " ${value}")
            endforeach()
            string(APPEND line "\t${shown}")
        endforeach()
        file(APPEND ${file} "${line}\n")
    endforeach()
    get_property(directories DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(inner ${directories})
        wren_append_targets(${file} ${inner})
    endforeach()
endfunction()
