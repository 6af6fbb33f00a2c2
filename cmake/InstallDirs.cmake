# Where things go. On Debian libraries stand in a folder of their architecture, under /usr and /usr/local alike, where
# its linker, pkg-config and CMake look for them; so a package made of any build has them in their place.
if(EXISTS /etc/debian_version AND CMAKE_LIBRARY_ARCHITECTURE AND NOT CMAKE_CROSSCOMPILING)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Libraries, relative to the prefix")
endif()
include(GNUInstallDirs)
