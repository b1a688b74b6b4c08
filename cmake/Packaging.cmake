# The Debian package: `cpack -G DEB` in the build folder makes ampora_<version>_<arch>.deb from
# the install rules of cmake/Install.cmake, under /usr. The package shipped is made from a
# Release build by tools/package.sh; tests/packaging checks the rules from the test build.
set(AMPORA_PACKAGE_MAINTAINER "DC Ampora developers <dc-ampora@example.org>"
    CACHE STRING "Maintainer field of the Debian package")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ampora)
set(CPACK_PACKAGE_VENDOR "DC Ampora")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "teaching tool for the nodal analysis of DC circuits")
set(CPACK_PACKAGE_DESCRIPTION
    "DC Ampora lets a student draw a circuit of batteries, resistors and current sources, name \
its nodes, and follow its solution by nodal analysis: the count of unknowns, the Kirchhoff's \
Current Law equation of every node and supernode, the augmented matrix and its Gauss-Jordan \
reduction, and every current, voltage and power. It includes ampora-cli, which solves circuit \
files without a window, for teachers preparing answer keys.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${AMPORA_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries (Qt, libstdc++) come from dpkg-shlibdeps; the fonts are asked for by name at run
# time, so no library dependency reveals them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation")
# The menu entry, the .amq file type and the icons reach the desktop through the file triggers
# of these packages (update-desktop-database, update-mime-database, gtk-update-icon-cache),
# which dpkg runs when files appear in their folders: no maintainer scripts are needed.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils, hicolor-icon-theme")

include(CPack)
