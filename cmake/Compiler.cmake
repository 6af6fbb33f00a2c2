# Flags that all our code shares, as interface targets.

option(OXLUME_WERROR "Treat warnings as errors" OFF)
set(OXLUME_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

add_library(oxlume_warnings INTERFACE)
target_compile_options(oxlume_warnings INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${OXLUME_WERROR}>:-Werror>)

# Results are fixed to the bit: no fused multiply-add, no other liberty with floating point.
add_library(oxlume_numbers INTERFACE)
target_compile_options(oxlume_numbers INTERFACE -ffp-contract=off -fno-semantic-interposition)
target_compile_options(oxlume_numbers INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-math-errno -fno-trapping-math>
                                                $<$<CXX_COMPILER_ID:Clang>:-fno-math-errno>)

if(OXLUME_SANITIZE)
  add_compile_definitions(OXLUME_SANITIZED)
  add_compile_options(-fsanitize=${OXLUME_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${OXLUME_SANITIZE})
endif()

# What fuzz targets run in: compiled so that the fuzzer sees which of its inputs reach something new. It is not told
# of comparisons, which drawing is full of; the words that readers look for stand in its dictionaries.
option(OXLUME_FUZZ "Build the fuzz targets, by clang, and the library so that they see into it" OFF)
add_library(oxlume_fuzzed INTERFACE)
if(OXLUME_FUZZ)
  target_compile_options(oxlume_fuzzed INTERFACE -fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
