# The one place that chooses between Apple's frameworks and the stand-ins under platform/.
#
# ozmira_coregraphics   <CoreGraphics/CoreGraphics.h> and what it needs at link time

if(APPLE)
  find_library(OZMIRA_COREGRAPHICS_FRAMEWORK CoreGraphics REQUIRED)
  add_library(ozmira_coregraphics INTERFACE)
  target_link_libraries(ozmira_coregraphics INTERFACE "${OZMIRA_COREGRAPHICS_FRAMEWORK}")
endif()
