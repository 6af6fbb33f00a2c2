# What `cmake --install` puts in its place. Components, which the Debian packages are made of (Package.cmake):
# "runtime" and "development" for the library, "cocoa-runtime" and "cocoa-development" for liboxlume-cocoa, and
# "program". All of it can be moved as a whole: nothing installed holds a path of the machine that built it.

include(CMakePackageConfigHelpers)
set(OXLUME_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Oxlume)
set(generated ${CMAKE_CURRENT_BINARY_DIR}/install)

# ---- The library ----

install(
  TARGETS oxlume
  EXPORT OxlumeCore
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          COMPONENT runtime
          NAMELINK_COMPONENT development)
set(left_out PATTERN cocoa EXCLUDE)
if(NOT OXLUME_QUARTZ)
  list(APPEND left_out PATTERN LxQuartz.h EXCLUDE)
endif()
install(DIRECTORY include/oxlume DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development ${left_out})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/oxlume COMPONENT runtime)

install(EXPORT OxlumeCore FILE OxlumeCoreTargets.cmake NAMESPACE Oxlume:: DESTINATION ${OXLUME_CMAKE_DIR}
        COMPONENT development)
configure_package_config_file(cmake/OxlumeConfig.cmake.in ${generated}/OxlumeConfig.cmake
                              INSTALL_DESTINATION ${OXLUME_CMAKE_DIR} NO_SET_AND_CHECK_MACRO
                              NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${generated}/OxlumeConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/OxlumeConfig.cmake ${generated}/OxlumeConfigVersion.cmake DESTINATION ${OXLUME_CMAKE_DIR}
        COMPONENT development)

# oxlume_install_pkgconfig(NAME COMPONENT): cmake/NAME.pc.in, which finds its prefix from where it lies.
file(RELATIVE_PATH OXLUME_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" OXLUME_PREFIX_FROM_PC "${OXLUME_PREFIX_FROM_PC}")
function(oxlume_install_pkgconfig name component)
  configure_file(cmake/${name}.pc.in ${generated}/${name}.pc @ONLY)
  install(FILES ${generated}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${component})
endfunction()
oxlume_install_pkgconfig(oxlume development)

# ---- liboxlume-cocoa ----

if(OXLUME_COCOA)
  set_target_properties(oxlume_cocoa PROPERTIES EXPORT_NAME cocoa)
  install(
    TARGETS oxlume_cocoa
    EXPORT OxlumeCocoa
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT cocoa-runtime
            NAMELINK_COMPONENT cocoa-development)
  install(DIRECTORY include/oxlume/cocoa DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxlume COMPONENT cocoa-development)
  install(EXPORT OxlumeCocoa FILE OxlumeCocoaTargets.cmake NAMESPACE Oxlume:: DESTINATION ${OXLUME_CMAKE_DIR}
          COMPONENT cocoa-development)
  install(FILES cmake/OxlumeGNUstep.cmake DESTINATION ${OXLUME_CMAKE_DIR} COMPONENT cocoa-development)

  # pkg-config knows nothing of GNUstep, so its flags are written down: those of the system, not of a user's own.
  get_target_property(OXLUME_GNUSTEP_FLAGS oxlume_gnustep INTERFACE_COMPILE_OPTIONS)
  string(REGEX REPLACE "^[$]<[$]<COMPILE_LANGUAGE:OBJC,OBJCXX>:(.*)>$" "\\1" flags "${OXLUME_GNUSTEP_FLAGS}")
  list(FILTER flags EXCLUDE REGEX "^-isystem(/root|/home|/usr/local)/")
  list(TRANSFORM flags REPLACE "^-isystem" "-I")
  list(REMOVE_DUPLICATES flags)
  list(JOIN flags " " OXLUME_GNUSTEP_FLAGS)
  get_target_property(libraries oxlume_gnustep INTERFACE_LINK_LIBRARIES)
  list(FILTER libraries INCLUDE REGEX "^-l")
  list(JOIN libraries " " OXLUME_GNUSTEP_LIBRARIES)
  oxlume_install_pkgconfig(oxlume-cocoa cocoa-development)
endif()

# ---- The program ----

if(OXLUME_TOOLS)
  install(TARGETS oxlume_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  configure_file(docs/oxlume.1.in ${generated}/oxlume.1 @ONLY)
  install(FILES ${generated}/oxlume.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
endif()
