# tintora_add_test(NAME <target> SOURCES <files...> [LIBS <libs...>])
# One GoogleTest program; each of its tests becomes a ctest test.
include(GoogleTest)

function(tintora_add_test)
  cmake_parse_arguments(ARG "" "NAME" "SOURCES;LIBS" ${ARGN})
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_link_libraries(${ARG_NAME} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  # Prefixed with the program, so that like-named suites of two programs stay apart.
  gtest_discover_tests(${ARG_NAME} TEST_PREFIX "${ARG_NAME}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)
endfunction()
