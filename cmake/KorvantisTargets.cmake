# One target per folder of src/, so that a wrong include does not even compile.
#
# Headers are included as "<folder>/<Class>.h". Every target exposes nothing but its own folder,
# through a link under the build tree: a file sees exactly the folders of the targets that it is
# linked with.

set(KORVANTIS_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
    -Wold-style-cast -Wimplicit-fallthrough -Wformat=2)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # GCC 12 sees "uninitialized" members in the destructors of moved-from std::variant and
  # std::optional values once it optimises, and "overlapping" copies in std::string's operator+
  # (its bug 105651); clang-tidy's analyzer looks for the real ones.
  list(APPEND KORVANTIS_WARNINGS -Wno-maybe-uninitialized -Wno-restrict)
endif()
if(KORVANTIS_WERROR)
  list(APPEND KORVANTIS_WARNINGS -Werror)
endif()

set(KORVANTIS_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")
option(KORVANTIS_PCH "Precompile the headers that most files include (quicker builds)" ON)
option(KORVANTIS_CONCURRENT_TESTS_ONLY "Build only the test programs that have tests of several threads" OFF)
set(KORVANTIS_COVERAGE OFF CACHE BOOL "Instrument for coverage")
if(KORVANTIS_SANITIZE)
  add_compile_options(-fsanitize=${KORVANTIS_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer -g1)  # Lines are all that a report needs.
  add_link_options(-fsanitize=${KORVANTIS_SANITIZE})
endif()
if(KORVANTIS_COVERAGE)
  add_compile_options(--coverage -O0 -g)
  add_link_options(--coverage)
endif()

# korvantis_folder(<target> <folder>): makes "<folder>/..." includable from <target> and from all
# that link it.
function(korvantis_folder target folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${root})
endfunction()

# Precompiles what most files of a target include anyway. The linter has a configuration without,
# since it can't read GCC's precompiled headers.
function(korvantis_precompile target)
  if(NOT KORVANTIS_PCH)
    return()
  endif()
  target_precompile_headers(${target} PRIVATE
    <algorithm> <array> <cstdint> <functional> <map> <mutex> <optional> <string> <unordered_map>
    <variant> <vector> ${ARGN})
endfunction()

# korvantis_library(<name> FOLDER <folder> SOURCES ... [LINKS ...]): the library of one folder,
# with the alias korvantis::<name>.
function(korvantis_library name)
  cmake_parse_arguments(arg "" "FOLDER" "SOURCES;LINKS" ${ARGN})
  add_library(korvantis_${name} STATIC ${arg_SOURCES})
  add_library(korvantis::${name} ALIAS korvantis_${name})
  korvantis_folder(korvantis_${name} ${arg_FOLDER})
  target_compile_options(korvantis_${name} PRIVATE ${KORVANTIS_WARNINGS})
  target_link_libraries(korvantis_${name} PUBLIC ${arg_LINKS})
  if("Qt6::Quick" IN_LIST arg_LINKS)
    korvantis_precompile(korvantis_${name} <QtCore> <QtQml> <QtQuick>)
  elseif("Qt6::Qml" IN_LIST arg_LINKS)
    korvantis_precompile(korvantis_${name} <QtCore> <QtQml>)
  else()
    korvantis_precompile(korvantis_${name})
  endif()
endfunction()

# Whether one of these test sources holds a test of several threads; such a test says so in its
# name.
function(korvantis_has_concurrent_test result)
  set(${result} OFF PARENT_SCOPE)
  foreach(source IN LISTS ARGN)
    get_filename_component(path ${source} ABSOLUTE)
    file(STRINGS ${path} found REGEX "TEST.*Concurren" LIMIT_COUNT 1)
    if(found)
      set(${result} ON PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

# korvantis_test(<name> SOURCES ... LINKS ...): a GoogleTest program; each of its tests is a test
# of CTest. LABEL "concurrent" marks the ones that the thread sanitizer runs.
function(korvantis_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  if(KORVANTIS_CONCURRENT_TESTS_ONLY)
    korvantis_has_concurrent_test(is_wanted ${arg_SOURCES})
    if(NOT is_wanted)
      set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
      return()
    endif()
  endif()
  # What is tested is optimised; the tests themselves compile in half the time without.
  target_compile_options(${name} PRIVATE ${KORVANTIS_WARNINGS} $<$<CONFIG:Release>:-O0>)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock_main)
  korvantis_precompile(${name} <gmock/gmock.h> <gtest/gtest.h>)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()

# korvantis_benchmark(<name> SOURCES ... LINKS ...): a Google Benchmark program.
function(korvantis_benchmark name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_compile_options(${name} PRIVATE ${KORVANTIS_WARNINGS})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} benchmark::benchmark_main)
endfunction()
