# What makes a shared library a plug-in part that a host can load.

# finish_part(TARGET NAME): lets TARGET be plugins/NAME.so, which exports its entry point alone.
function(finish_part target name)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name})
  if(APPLE)
    target_link_options(${target} PRIVATE -Wl,-exported_symbol,_REALPluginMain)
    return()
  endif()

  set(exports ${PROJECT_SOURCE_DIR}/cmake/part_exports.map)
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/plugins
    BUILD_RPATH "$ORIGIN/.."
    LINK_DEPENDS ${exports})
  target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
  # A sanitizer's runtime lies in the program that loads the part.
  if(NOT NSIMAGE_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
