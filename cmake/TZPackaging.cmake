# The Debian package (scripts/package-deb.sh runs "cpack -G DEB"): one
# package with the libraries, their headers and CMake package, tzmap and
# tzmap-sampledata. Its run-time dependencies are read from the binaries by
# dpkg-shlibdeps; building a host against the package needs the development
# packages it suggests.
set(CPACK_PACKAGE_NAME tzrender)
set(CPACK_PACKAGE_VENDOR "TZRender")
set(CPACK_PACKAGE_CONTACT "TZRender developers <tzrender@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "Symbol rendering dock for Qt 5 desktop GIS, its object model and the tzmap viewer")
set(CPACK_PACKAGE_DESCRIPTION
  "TZRender is a Qt 5 widget library whose Symbol rendering dock sets how a map layer is drawn (single symbol, unique values, graded classes, rules, diagrams, raster stretches and composites). The package holds the libraries TZRender, TZHostWidgets and TZObjects (the object model over GDAL/OGR and GEOS) with their headers and CMake package, and tzmap, a desktop map viewer built on them, with tzmap-sampledata, which writes a sample data set and project.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# A shlibs file and the ldconfig trigger for the libraries.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qtbase5-dev, libqt5charts5-dev, libgdal-dev, libgeos-dev, cmake")
include(CPack)
