# Lets CPack make two Debian packages: `ozmira`, the tool with its pages and completions, and `libozmira-dev`, the
# libraries with all that is needed to build against them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The Ozmira authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has a summary of its own, its first line below
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL tool development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Otherwise folders take the permissions that the umask of whoever builds leaves them.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# Debian's own variables name who makes the package.
set(maintainer "The Ozmira authors")
set(maintainer_address "maintainers@ozmira.example")
if(NOT "$ENV{DEBFULLNAME}" STREQUAL "")
  set(maintainer "$ENV{DEBFULLNAME}")
endif()
if(NOT "$ENV{DEBEMAIL}" STREQUAL "")
  set(maintainer_address "$ENV{DEBEMAIL}")
endif()
set(CPACK_PACKAGE_CONTACT "${maintainer} <${maintainer_address}>")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ozmira)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "draw, check and rewrite SVG icons for applications
Draws a static subset of SVG as PNG pictures in the sizes and scales that
applications want, and makes asset catalogues for Xcode. Names every place
where a drawing would look differently in a browser, and rewrites drawings so
that they do not.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libozmira-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "librapidxml-dev, libexpat1-dev, libpolyclipping-dev")
# Only the object layer needs them.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "clang, libgnustep-base-dev, libspng-dev, ozmira")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "SVG icons for applications (development files)
Reads a static subset of SVG into a compact document, and draws the document
at any size and scale through the interface of CoreGraphics.

This package holds the static libraries, their headers, and the files by which
CMake and pkg-config find them.")

# What Debian wants in the folder of every package.
string(TIMESTAMP package_date "%a, %d %b %Y %H:%M:%S +0000" UTC) # SOURCE_DATE_EPOCH, if that is set
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" key)
  set(package "${CPACK_DEBIAN_${key}_PACKAGE_NAME}")
  configure_file(cmake/debian/changelog.in "debian/${package}/changelog" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/debian/${package}/changelog" "${PROJECT_SOURCE_DIR}/cmake/debian/copyright"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component})
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/compress_pages.cmake")

include(CPack)
