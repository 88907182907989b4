# Unpacks the Debian packages of BUILD_DIR into an empty folder and checks them there, where everything is found through
# PATH, CMAKE_PREFIX_PATH and PKG_CONFIG_PATH.
load_cache("${BUILD_DIR}" READ_WITH_PREFIX "" CMAKE_CXX_COMPILER CMAKE_OBJCXX_COMPILER CMAKE_INSTALL_LIBDIR
  CMAKE_INSTALL_BINDIR CMAKE_PROJECT_VERSION)
set(VERSION "${CMAKE_PROJECT_VERSION}")
set(COMPILER "${CMAKE_CXX_COMPILER}")
set(OBJCXX_COMPILER "${CMAKE_OBJCXX_COMPILER}")
set(LIBDIR "${CMAKE_INSTALL_LIBDIR}")
set(BINDIR "${CMAKE_INSTALL_BINDIR}")
set(PKG_CONFIG pkg-config)
set(CONFORM ON)
set(OBJECTS ON)
set(TOOL ON)

set(WORK_DIR "${BUILD_DIR}/check")
set(prefix "${WORK_DIR}/root/usr")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
foreach(package IN ITEMS ozmira libozmira-dev)
  file(GLOB archive "${BUILD_DIR}/${package}_${VERSION}_*.deb")
  execute_process(COMMAND dpkg-deb --extract "${archive}" "${WORK_DIR}/root" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
include("${CMAKE_CURRENT_LIST_DIR}/check_prefix.cmake")
message(STATUS "The packages hold all that is needed.")
