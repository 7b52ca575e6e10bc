# Foundation is GNUstep Base over the GCC Objective-C runtime, compiled for with clang.
# The runtime's headers lie in GCC's own include folder.

file(GLOB gcc_objc_headers "/usr/lib/gcc/*/*/include/objc/objc.h")
list(SORT gcc_objc_headers COMPARE NATURAL ORDER DESCENDING)
if(NOT gcc_objc_headers)
  message(FATAL_ERROR "No GCC Objective-C runtime headers found; install libobjc-12-dev")
endif()
list(GET gcc_objc_headers 0 gcc_objc_header)
get_filename_component(gcc_objc_folder "${gcc_objc_header}" DIRECTORY)

# Only objc/ of GCC's include folder: its other headers are for GCC alone.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/objc-runtime)
file(CREATE_LINK ${gcc_objc_folder} ${CMAKE_BINARY_DIR}/objc-runtime/objc SYMBOLIC)

find_path(GNUSTEP_INCLUDE Foundation/Foundation.h PATHS /usr/include/GNUstep REQUIRED NO_DEFAULT_PATH)
find_library(GNUSTEP_BASE gnustep-base REQUIRED)
find_library(OBJC_RUNTIME NAMES objc PATHS ${gcc_objc_folder}/../.. REQUIRED)

add_library(gnustep_base INTERFACE)
target_include_directories(gnustep_base SYSTEM INTERFACE ${GNUSTEP_INCLUDE} ${CMAKE_BINARY_DIR}/objc-runtime)
target_compile_definitions(gnustep_base INTERFACE
  GNUSTEP GNUSTEP_BASE_LIBRARY=1 _NATIVE_OBJC_EXCEPTIONS=1)
target_compile_options(gnustep_base INTERFACE
  $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-runtime=gcc -fobjc-exceptions -fexceptions -fconstant-string-class=NSConstantString -Wno-objc-root-class -Wno-deprecated-declarations>)
target_link_libraries(gnustep_base INTERFACE ${GNUSTEP_BASE} ${OBJC_RUNTIME} pthread ${CMAKE_DL_LIBS})
