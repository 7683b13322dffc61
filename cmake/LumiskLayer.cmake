# lumisk_layer(NAME [SOURCES …] [LINKS …])
#
# One static library per folder. Its headers are reached as "NAME/file.h" through an include root
# that holds this one folder only, so a layer that does not link another cannot include it either:
# an arrow in the wrong direction fails to build.
function(lumisk_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "FOLDER" "SOURCES;LINKS;PRIVATE_LINKS")
  if(NOT layer_FOLDER)
    set(layer_FOLDER ${name})
  endif()
  set(root "${PROJECT_BINARY_DIR}/layers/${name}")
  get_filename_component(parent "${root}/${layer_FOLDER}" DIRECTORY)
  file(MAKE_DIRECTORY "${parent}")
  file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${layer_FOLDER}" "${root}/${layer_FOLDER}" SYMBOLIC)

  if(layer_SOURCES)
    add_library(lumisk_${name} STATIC ${layer_SOURCES})
    target_include_directories(lumisk_${name} PUBLIC "${root}")
    target_link_libraries(lumisk_${name} PUBLIC ${layer_LINKS} PRIVATE ${layer_PRIVATE_LINKS})
  else()
    add_library(lumisk_${name} INTERFACE)
    target_include_directories(lumisk_${name} INTERFACE "${root}")
    target_link_libraries(lumisk_${name} INTERFACE ${layer_LINKS})
  endif()
endfunction()

# lumisk_test(NAME [LABEL headless|display] SOURCES … [LINKS …])
#
# One GoogleTest program. Tests that need a screen carry the label "display".
function(lumisk_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "LABEL" "SOURCES;LINKS")
  if(NOT test_LABEL)
    set(test_LABEL headless)
  endif()
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE ${test_LINKS} lumisk_test_support GTest::gmock GTest::gtest_main)
  # Half of the time that a file of tests takes to compile goes into these. The first program makes
  # them, and all use them.
  get_property(headers GLOBAL PROPERTY LUMISK_TEST_HEADERS)
  if(headers)
    target_precompile_headers(${name} REUSE_FROM ${headers})
  else()
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
    set_property(GLOBAL PROPERTY LUMISK_TEST_HEADERS ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                       PROPERTIES LABELS ${test_LABEL} TIMEOUT 120)
endfunction()
