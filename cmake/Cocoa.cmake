# liboxlume-cocoa is Objective-C++ against GNUstep, which g++ compiles, whatever the compiler of the rest: clang
# finds no Objective-C runtime beside GNUstep. Under clang's sanitizers, whose runtime is another than g++'s, it is
# left out.
#
# Sets OXLUME_COCOA, and makes the target oxlume_gnustep with GNUstep's flags.

find_program(GNUSTEP_CONFIG gnustep-config)
find_program(OXLUME_GOBJCXX g++)
set(possible OFF)
if(GNUSTEP_CONFIG AND OXLUME_GOBJCXX AND OXLUME_QUARTZ)
  # g++ answers a path only where its Objective-C++ is installed.
  execute_process(COMMAND ${OXLUME_GOBJCXX} -print-prog-name=cc1objplus OUTPUT_VARIABLE compiler
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${compiler}" AND (NOT OXLUME_SANITIZE OR CMAKE_CXX_COMPILER_ID STREQUAL "GNU"))
    set(possible ON)
  endif()
endif()
option(OXLUME_COCOA "Build the bridges to GNUstep, which need OXLUME_QUARTZ" ${possible})

if(OXLUME_COCOA)
  if(NOT CMAKE_OBJCXX_COMPILER)
    set(CMAKE_OBJCXX_COMPILER ${OXLUME_GOBJCXX})
  endif()
  enable_language(OBJCXX)
  add_compile_options($<$<COMPILE_LANGUAGE:OBJCXX>:-std=c++20>)

  # What concerns the platform: definitions, the runtime's options, and headers, whose warnings are not ours.
  execute_process(COMMAND ${GNUSTEP_CONFIG} --objc-flags OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  list(FILTER flags INCLUDE REGEX "^(-D.*|-I/.*|-fexceptions|-fobjc-exceptions|-fconstant-string-class=.*|-pthread)$")
  list(TRANSFORM flags REPLACE "^-I" "-isystem")
  execute_process(COMMAND ${GNUSTEP_CONFIG} --gui-libs OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(libraries UNIX_COMMAND "${libraries}")
  list(FILTER libraries INCLUDE REGEX "^-[lL]")

  add_library(oxlume_gnustep INTERFACE)
  target_compile_options(oxlume_gnustep INTERFACE $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:${flags}>)
  target_link_libraries(oxlume_gnustep INTERFACE ${libraries})
endif()
