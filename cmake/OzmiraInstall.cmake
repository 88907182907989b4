# Installs the libraries with their headers, a CMake package and a pkg-config file. The tool installs itself.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/Ozmira")
# A separate folder rather than a part of the framework's own headers, so that a search path can name it.
set(platform_include_dir "${CMAKE_INSTALL_INCLUDEDIR}/OzmiraPlatform")

set(libraries core coregraphics render)
if(OZMIRA_BUILD_API)
  list(APPEND libraries objects frameworks)
  if(NOT APPLE)
    list(APPEND libraries objc foundation dispatch coreimage uikit)
  endif()
  set_target_properties(ozmira_api PROPERTIES EXPORT_NAME Objects)
  install(TARGETS ozmira_api EXPORT OzmiraTargets)
endif()
foreach(library IN LISTS libraries)
  install(TARGETS ozmira_${library} EXPORT OzmiraTargets)
endforeach()
set_target_properties(ozmira_all PROPERTIES EXPORT_NAME Ozmira)
install(TARGETS ozmira_all EXPORT OzmiraTargets)
install(EXPORT OzmiraTargets NAMESPACE Ozmira:: DESTINATION "${package_dir}")

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/Ozmira" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(NOT APPLE)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/platform/include/" DESTINATION "${platform_include_dir}")
  target_include_directories(ozmira_coregraphics INTERFACE "$<INSTALL_INTERFACE:${platform_include_dir}>")
  if(OZMIRA_BUILD_API)
    target_include_directories(ozmira_objc INTERFACE "$<INSTALL_INTERFACE:${platform_include_dir}>")
  endif()
endif()

configure_package_config_file(cmake/OzmiraConfig.cmake.in OzmiraConfig.cmake INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(OzmiraConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/OzmiraConfig.cmake" "${PROJECT_BINARY_DIR}/OzmiraConfigVersion.cmake"
  DESTINATION "${package_dir}")

# The prefix is relative to the file's own location, so that the installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
set(pc_platform_libs "-lozmira_coregraphics")
if(APPLE)
  set(pc_platform_libs "-framework CoreGraphics")
endif()
configure_file(cmake/ozmira.pc.in ozmira.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/ozmira.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
