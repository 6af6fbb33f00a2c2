# The Quartz layer is drawn by cairo. In a library without it the renderer kind 6 and CGImages fail at creation.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(cairo QUIET IMPORTED_TARGET cairo)
endif()
if(TARGET PkgConfig::cairo)
  set(found_cairo ON)
else()
  set(found_cairo OFF)
endif()
option(OXLUME_QUARTZ "Build the Quartz layer and its renderer" ${found_cairo})
if(OXLUME_QUARTZ AND NOT found_cairo)
  message(FATAL_ERROR "OXLUME_QUARTZ needs the development files of cairo, found by pkg-config")
endif()

add_library(oxlume_quartz INTERFACE)
if(OXLUME_QUARTZ)
  target_link_libraries(oxlume_quartz INTERFACE PkgConfig::cairo)
endif()

# oxlume_exports(MAP RESULT): the list of exported names that holds for this build, without the version of Quartz if
# that is not built.
function(oxlume_exports map result)
  if(NOT OXLUME_QUARTZ)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${map})
    file(READ ${map} listed)
    string(REGEX REPLACE "OXLUME_QUARTZ_0 {[^}]*}[^;]*;" "" listed "${listed}")
    set(map ${CMAKE_CURRENT_BINARY_DIR}/exports.map)
    file(WRITE ${map} "${listed}")
  endif()
  set(${result} ${map} PARENT_SCOPE)
endfunction()
