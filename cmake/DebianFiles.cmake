# Run by cpack between installing into a staging folder and packing it. For Debian packages: compresses the manual
# page, writes each package's copyright and changelog, and writes the prefix into pkg-config files, whose flags are
# then the short ones that pkg-config leaves out for system folders. Other packages stay as they are.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})

  file(REMOVE_RECURSE ${root}/share/doc/oxlume)
  file(MAKE_DIRECTORY ${root}/share/doc/${package})
  file(COPY_FILE ${CPACK_RESOURCE_FILE_LICENSE} ${root}/share/doc/${package}/copyright)
  file(WRITE ${root}/share/doc/${package}/changelog
       "oxlume (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n  * See CHANGELOG.md of the sources.\n\n"
       " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")

  file(GLOB manuals ${root}/share/man/man1/*.1)
  foreach(file IN LISTS manuals ITEMS ${root}/share/doc/${package}/changelog)
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()

  file(GLOB_RECURSE files ${root}/*.pc)
  foreach(file IN LISTS files)
    file(READ ${file} text)
    string(REGEX REPLACE "^prefix=[^\n]*" "prefix=/usr" text "${text}")
    file(WRITE ${file} "${text}")
  endforeach()
endforeach()
