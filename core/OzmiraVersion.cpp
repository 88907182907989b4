#include <Ozmira/OzmiraVersion.h>

// The build defines both macros from the version in the project's CMakeLists.txt.
const double OzmiraVersionNumber = OZMIRA_VERSION_NUMBER;
const unsigned char OzmiraVersionString[] = "@(#)PROGRAM:Ozmira PROJECT:Ozmira-" OZMIRA_VERSION_MAJOR "\n";
