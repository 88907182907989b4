# The one place that chooses between Apple's frameworks and the stand-ins under platform/.
#
# ozmira_coregraphics   <CoreGraphics/CoreGraphics.h> and what it needs at link time
# ozmira_frameworks     what the object layer builds on: Foundation, UIKit, Core Image, libdispatch
# OZMIRA_BUILD_API      whether the object layer is built: OZMIRA_API, with AUTO resolved

set(OZMIRA_API_MISSING "")
if(APPLE)
  find_library(OZMIRA_COREGRAPHICS_FRAMEWORK CoreGraphics REQUIRED)
  add_library(ozmira_coregraphics INTERFACE)
  target_link_libraries(ozmira_coregraphics INTERFACE "${OZMIRA_COREGRAPHICS_FRAMEWORK}")

  if(NOT OZMIRA_API STREQUAL "OFF")
    add_library(ozmira_frameworks INTERFACE)
    target_link_libraries(ozmira_frameworks INTERFACE ozmira_coregraphics)
    foreach(framework Foundation UIKit CoreImage)
      find_library(OZMIRA_${framework}_FRAMEWORK ${framework})
      if(OZMIRA_${framework}_FRAMEWORK)
        target_link_libraries(ozmira_frameworks INTERFACE "${OZMIRA_${framework}_FRAMEWORK}")
      else()
        list(APPEND OZMIRA_API_MISSING "${framework}.framework")
      endif()
    endforeach()
    enable_language(OBJC)
    enable_language(OBJCXX)
  endif()
elseif(NOT OZMIRA_API STREQUAL "OFF")
  include(OzmiraObjC) # platform/CMakeLists.txt defines ozmira_frameworks
endif()

if(OZMIRA_API STREQUAL "OFF")
  set(OZMIRA_BUILD_API OFF)
elseif(NOT OZMIRA_API_MISSING)
  set(OZMIRA_BUILD_API ON)
else()
  set(OZMIRA_BUILD_API OFF)
  list(REMOVE_DUPLICATES OZMIRA_API_MISSING)
  list(JOIN OZMIRA_API_MISSING ", " ozmira_missing)
  if(OZMIRA_API STREQUAL "AUTO")
    message(STATUS "Objective-C object layer left out; missing: ${ozmira_missing}")
  else()
    message(FATAL_ERROR "OZMIRA_API is ${OZMIRA_API}, but this is missing: ${ozmira_missing}. "
      "Install it, or configure with -DOZMIRA_API=OFF.")
  endif()
endif()
