# Packages, made by `cpack` in a build folder or by the target "package": an archive of all, and Debian packages of
# the components that Install.cmake names. Sets OXLUME_DEBIAN_PACKAGES where these can be made.

set(CPACK_GENERATOR TGZ)
set(OXLUME_DEBIAN_PACKAGES OFF)
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
find_program(FILE_COMMAND file)
if(DPKG_SHLIBDEPS AND FILE_COMMAND)
  set(OXLUME_DEBIAN_PACKAGES ON)
  list(APPEND CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_VENDOR "The Oxlume authors")
set(CPACK_PACKAGE_CONTACT "The Oxlume authors <maintainers@oxlume.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# What cpack adds to a package of a library is a script, where Debian now has the linker's cache renewed by this.
set(triggers ${CMAKE_CURRENT_BINARY_DIR}/install/triggers)
file(WRITE ${triggers} "activate-noawait ldconfig\n")
# Turns an installation into what Debian's rules ask of a package.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/DebianFiles.cmake)

# oxlume_package(COMPONENT PACKAGE SECTION SUMMARY TEXT COMPONENT...): a Debian package that depends on those of
# other components. What else it needs is found from its libraries or appended below.
set(CPACK_COMPONENTS_ALL)
macro(oxlume_package component package section summary text)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}")
  set(CPACK_COMPONENT_${upper}_DEPENDS ${ARGN})
endmacro()

set(about "Oxlume draws and computes pictures: images in six pixel types, integer
blend modes fixed to the bit, vector paths, drawing contexts, and a generator
of lit, bevelled, noisy surfaces.
.
This package holds")
set(soname ${PROJECT_VERSION_MAJOR})
oxlume_package(runtime liboxlume${soname} libs "2D graphics and imaging library" "${about} the library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${triggers})
oxlume_package(development liboxlume-dev libdevel "2D graphics and imaging library: development files"
               "${about} headers, a CMake package and a pkg-config file." runtime)
if(OXLUME_TOOLS)
  oxlume_package(program oxlume graphics "2D graphics and imaging from the command line"
                 "${about} the program oxlume, which works on PNG files.")
endif()
if(OXLUME_COCOA)
  oxlume_package(cocoa-runtime liboxlume-cocoa${soname} libs "2D graphics and imaging library: bridges to GNUstep"
                 "${about} the library that joins it to GNUstep." runtime)
  set(CPACK_DEBIAN_COCOA-RUNTIME_PACKAGE_CONTROL_EXTRA ${triggers})
  oxlume_package(cocoa-development liboxlume-cocoa-dev libdevel
                 "2D graphics and imaging library: development files for GNUstep"
                 "${about} what building programs for GNUstep needs." cocoa-runtime development)
  set(CPACK_DEBIAN_COCOA-DEVELOPMENT_PACKAGE_DEPENDS "libgnustep-gui-dev")
endif()
# The project's description would come before the packages' own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
include(CPack)
