# Compile settings of every target, and the two ways a target comes about: a library for each folder of
# src/, a test binary for each folder of tests/.

add_library(velmora_options INTERFACE)
target_compile_options(velmora_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 warns of overlapping and overlong copies in "text" + std::string where there are none (GCC bugs
  # 105329 and 105651).
  target_compile_options(velmora_options INTERFACE -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow)
endif()
target_include_directories(velmora_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # A test class with a base in an anonymous namespace is only dangerous in a header.
  target_compile_options(velmora_options INTERFACE -Wno-subobject-linkage)
endif()
if(VELMORA_SANITIZE)
  target_compile_options(velmora_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(velmora_options INTERFACE -fsanitize=address,undefined)
endif()
if(VELMORA_FUZZ)
  # A number of a file that does not fit its type is a fault that the usual set of checks lets pass.
  target_compile_options(velmora_options INTERFACE -fsanitize=fuzzer-no-link,float-cast-overflow)
  target_compile_definitions(velmora_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(VELMORA_COVERAGE)
  target_compile_options(velmora_options INTERFACE --coverage)
  target_link_options(velmora_options INTERFACE --coverage)
endif()

# velmora_library(<folder> [<library it may use>...])
function(velmora_library folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(velmora_${folder} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(velmora_${folder} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_link_libraries(velmora_${folder} ${scope} velmora_options)
  foreach(dependency IN LISTS ARGN)
    target_link_libraries(velmora_${folder} ${scope} ${dependency})
  endforeach()
endfunction()

# velmora_tests(<folder> [<library>...]): all *.cpp of the folder become the binary test_<folder>.
function(velmora_tests folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources})
  target_link_libraries(test_${folder} PRIVATE test_support ${ARGN} GTest::gtest_main)
  target_precompile_headers(test_${folder} REUSE_FROM test_support)
  gtest_discover_tests(test_${folder} PROPERTIES LABELS ${folder} TIMEOUT 300 DISCOVERY_TIMEOUT 60)
endfunction()
