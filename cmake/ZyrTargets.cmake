# What every target of the project shares, and one function per kind of target.

# The folder of the sources for this operating system, in each module that has such sources.
if(WIN32)
  set(ZYR_PLATFORM win32)
else()
  set(ZYR_PLATFORM posix)
endif()

add_library(zyr_flags INTERFACE)
target_include_directories(zyr_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zyr_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
    # The output is fixed to the bit, so a product and a sum are never contracted into one rounding.
    -ffp-contract=off
    # Reports name a source by its path below src/, on whatever machine it was built.
    -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/src/=)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler sees overlapping copies inside std::string where there are none.
  target_compile_options(zyr_flags INTERFACE -Wno-restrict)
endif()
if(WIN32)
  # The wide calls are named as such; what the system's headers can leave out they leave out.
  target_compile_definitions(zyr_flags INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
endif()
if(ZYR_SANITIZE)
  target_compile_options(zyr_flags INTERFACE -fsanitize=${ZYR_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(zyr_flags INTERFACE -fsanitize=${ZYR_SANITIZE})
endif()

# The headers of the standard library that most sources include, compiled once for all modules where the preset asks
# for it. The release build does without, so that a source which leaves one of its includes out does not compile.
if(ZYR_PRECOMPILE)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/empty.cpp CONTENT "")
  add_library(standard_headers OBJECT EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/precompiled/empty.cpp)
  target_link_libraries(standard_headers PRIVATE zyr_flags)
  target_precompile_headers(standard_headers PRIVATE <algorithm> <array> <cmath> <cstdint> <filesystem> <fstream>
    <functional> <limits> <map> <memory> <numeric> <optional> <set> <span> <sstream> <string> <string_view>
    <unordered_map> <utility> <variant> <vector>)
endif()

# zyr_module(NAME [ROOMS folder...] [DEPENDS module...] [LIBRARIES target...]): the static library zyr_NAME of
# all sources in the current folder and its rooms. Folders for one system or setting join by EXTRA patterns.
function(zyr_module name)
  cmake_parse_arguments(arg "" "" "ROOMS;DEPENDS;LIBRARIES;EXTRA" ${ARGN})
  list(TRANSFORM arg_ROOMS APPEND "/*.cpp" OUTPUT_VARIABLE room_sources)
  list(TRANSFORM arg_ROOMS APPEND "/*.h" OUTPUT_VARIABLE room_headers)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h ${room_sources} ${room_headers} ${arg_EXTRA})
  add_library(zyr_${name} STATIC ${sources})
  set_target_properties(zyr_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(zyr_${name} PUBLIC zyr_flags)
  foreach(dependency ${arg_DEPENDS})
    target_link_libraries(zyr_${name} PUBLIC $<TARGET_NAME_IF_EXISTS:zyr_${dependency}>)
  endforeach()
  target_link_libraries(zyr_${name} PRIVATE ${arg_LIBRARIES})
  if(ZYR_PRECOMPILE)
    target_precompile_headers(zyr_${name} REUSE_FROM standard_headers)
  endif()
endfunction()

# zyr_test(NAME MODULES module...): the test program NAME_tests of all sources in tests/NAME and its platform
# folder.
function(zyr_test name)
  cmake_parse_arguments(arg "" "" "MODULES;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/${name}/${ZYR_PLATFORM}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_include_directories(${name}_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  foreach(module ${arg_MODULES})
    target_link_libraries(${name}_tests PRIVATE $<TARGET_NAME_IF_EXISTS:zyr_${module}>)
  endforeach()
  target_compile_options(${name}_tests PRIVATE ${ZYR_TEST_FLAGS})
  target_precompile_headers(${name}_tests REUSE_FROM test_headers)
  target_link_libraries(${name}_tests PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
  if(CMAKE_CROSSCOMPILING)
    return()  # whoever can run the program does
  endif()
  gtest_discover_tests(${name}_tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
