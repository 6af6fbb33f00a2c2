# Vector code is written once, as plain C++ in a file that is compiled several times: once for the baseline
# instruction set and once for each level above it. Such a file puts all that it defines into the namespace
# LX_VECTOR_NAMESPACE, so that the levels cannot be mixed up by the linker; foundation/VectorLevel.h says which
# level to call.
#
# oxlume_add_vector_sources(FILE...)

string(TOLOWER "${CMAKE_SYSTEM_PROCESSOR}" processor)
set(OXLUME_VECTOR_LEVELS baseline)
if(processor MATCHES "x86_64|amd64")
  list(APPEND OXLUME_VECTOR_LEVELS avx2)
endif()
set(OXLUME_VECTOR_FLAGS_baseline -DLX_VECTOR_NAMESPACE=baseline)
set(OXLUME_VECTOR_FLAGS_avx2 -DLX_VECTOR_NAMESPACE=avx2 -mavx2 -mbmi2 -mtune=haswell)

function(oxlume_add_vector_sources)
  foreach(level ${OXLUME_VECTOR_LEVELS})
    set(objects oxlume_vector_${level})
    if(NOT TARGET ${objects})
      add_library(${objects} OBJECT)
      target_include_directories(${objects} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
      target_compile_options(${objects} PRIVATE ${OXLUME_VECTOR_FLAGS_${level}})
      target_link_libraries(${objects} PRIVATE oxlume_warnings oxlume_numbers oxlume_fuzzed)
      set_target_properties(${objects} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    endif()
    list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE sources)
    target_sources(${objects} PRIVATE ${sources})
  endforeach()
endfunction()
