# SPDX-License-Identifier: GPL-3.0-or-later
# One place for warning and sanitizer flags, applied per target.
function(kelvo_target_defaults target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wno-missing-field-initializers)
  if(KELVO_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(KELVO_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${KELVO_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${KELVO_SANITIZE})
  endif()
endfunction()

# A static library of one subsystem. Usage:
#   kelvo_library(name SOURCES a.cpp b.cpp LIBS dep1 dep2)
function(kelvo_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_LIBS})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  kelvo_target_defaults(${name})
endfunction()
