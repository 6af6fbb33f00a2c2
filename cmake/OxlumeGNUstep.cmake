# oxlume_add_gnustep(TARGET FOUND): gives an interface target what gnustep-config says that code against GNUstep
# needs: definitions, the runtime's options, headers (whose warnings are nobody's here) and libraries. Sets FOUND.
#
# Used by the build and, installed, by the component "cocoa" of the package.
function(oxlume_add_gnustep target found)
  find_program(GNUSTEP_CONFIG gnustep-config)
  set(${found} OFF PARENT_SCOPE)
  if(NOT GNUSTEP_CONFIG)
    return()
  endif()
  execute_process(COMMAND ${GNUSTEP_CONFIG} --objc-flags OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  list(FILTER flags INCLUDE REGEX "^(-D.*|-I/.*|-fexceptions|-fobjc-exceptions|-fconstant-string-class=.*|-pthread)$")
  list(TRANSFORM flags REPLACE "^-I" "-isystem")
  execute_process(COMMAND ${GNUSTEP_CONFIG} --gui-libs OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(libraries UNIX_COMMAND "${libraries}")
  list(FILTER libraries INCLUDE REGEX "^-[lL]")
  target_compile_options(${target} INTERFACE $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:${flags}>)
  target_link_libraries(${target} INTERFACE ${libraries})
  set(${found} ON PARENT_SCOPE)
endfunction()
