# Warnings, the floor of the instruction set, and the sanitizers.

add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wno-unused-parameter)

# Every Intel Mac has SSE3; the vectors and the single-rounding arithmetic of a 32-bit build need it.
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(i.86|x86|x86_64|AMD64)$")
  add_compile_options(-msse3 -mfpmath=sse)
endif()

if(NSIMAGE_SANITIZE)
  add_compile_options(-fsanitize=${NSIMAGE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${NSIMAGE_SANITIZE})
  if(NSIMAGE_SANITIZE MATCHES "address")
    target_sources(project_options INTERFACE
      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/leak_suppressions.cpp>)
  endif()
  if(NSIMAGE_SANITIZE MATCHES "thread")
    target_sources(project_options INTERFACE
      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/thread_suppressions.cpp>)
  endif()
  # Objective-C objects have no C++ type information to compare with.
  if(NSIMAGE_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize=vptr,function)
    add_link_options(-fno-sanitize=vptr,function)
  endif()
endif()
