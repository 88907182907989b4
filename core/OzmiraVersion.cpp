#include <Ozmira/OzmiraVersion.h>

const double OzmiraVersionNumber = 1.0;
const unsigned char OzmiraVersionString[] = "@(#)PROGRAM:Ozmira PROJECT:Ozmira-1\n";
