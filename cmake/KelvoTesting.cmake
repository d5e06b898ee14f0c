# SPDX-License-Identifier: GPL-3.0-or-later
# Test executables link exactly the library they test plus GoogleTest, and are
# registered with CTest case by case so that a failure names its case.
include(GoogleTest)

# kelvo_test(name LABEL unit|gui|x11 SOURCES ... LIBS ... [ENVIRONMENT ...])
# unit: gtest_main, no display. gui: a QApplication on the offscreen platform
# (tests/support/GuiTestMain.cpp). x11: a QCoreApplication
# (tests/support/CoreTestMain.cpp); these run the real binary on a desktop
# of their own, which the test starts.
function(kelvo_test name)
  cmake_parse_arguments(ARG "" "LABEL;TIMEOUT" "SOURCES;LIBS;ENVIRONMENT" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  find_package(GTest REQUIRED)
  if(ARG_LABEL STREQUAL "gui")
    list(APPEND ARG_SOURCES ${PROJECT_SOURCE_DIR}/tests/support/GuiTestMain.cpp)
    list(APPEND ARG_ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  elseif(ARG_LABEL STREQUAL "x11")
    list(APPEND ARG_SOURCES ${PROJECT_SOURCE_DIR}/tests/support/CoreTestMain.cpp)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gmock)
  if(NOT ARG_LABEL STREQUAL "x11" AND NOT ARG_LABEL STREQUAL "gui")
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  kelvo_target_defaults(${name})
  gtest_discover_tests(${name}
    PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "${ARG_ENVIRONMENT}"
    DISCOVERY_TIMEOUT 60)
endfunction()
