# `make package`: a Debian package of everything `cmake --install` puts in place, installed
# under /usr. Its Depends come from dpkg-shlibdeps (the libraries the executables link),
# plus what no library link shows: the window needs Qt's platform plugins to open at all.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvo-backplot)
set(CPACK_PACKAGE_VENDOR "Corvane Software Development Inc.")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "backplot viewer for CNC part programs (G-code)")
set(CPACK_PACKAGE_DESCRIPTION
  "Tarvo Backplot reads a G-code part program for a milling machine or a lathe, turns
every block into a motion element and draws the tool path, so that the program can be
checked before it goes to the machine: zoom and pan, single block step with the numbers
of each move, slow motion beside the program text, plots by tool, DXF and bitmap export,
printing. backplot-cli runs the same translation and drawing without a window.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(BACKPLOT_PACKAGE_MAINTAINER "Tarvo Backplot maintainers <maintainers@users.noreply.c-seed-016df610.example>"
  CACHE STRING "The Maintainer field of the Debian package")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${BACKPLOT_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${BACKPLOT_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
include(CPack)
