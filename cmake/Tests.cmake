# Every test runs in a process of its own: a plug-in's caches live as long as the process.

find_package(GTest REQUIRED)
include(GoogleTest)

# add_suite(NAME SOURCES file... [LIBRARIES target...])
function(add_suite name)
  cmake_parse_arguments(suite "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${suite_SOURCES})
  target_link_libraries(${name} PRIVATE project_options GTest::gmock GTest::gtest GTest::gtest_main ${suite_LIBRARIES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE
    PROJECT_SOURCE_DIR="${PROJECT_SOURCE_DIR}" PROJECT_BINARY_DIR="${CMAKE_BINARY_DIR}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120)
endfunction()
