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

  add_library(oxlume_gnustep INTERFACE)
  include(${CMAKE_CURRENT_LIST_DIR}/OxlumeGNUstep.cmake)
  oxlume_add_gnustep(oxlume_gnustep found)
endif()
