// By default, GNUstep takes "\" for a path separator and "c:" for a drive. Here, as on Apple's systems, they
// are ordinary characters of file names.
#import <Foundation/Foundation.h>

extern "C" const char* GSPathHandling(const char* mode); // documented, but declared in no header

namespace {

__attribute__((constructor)) void useUnixPaths() { GSPathHandling("unix"); }

} // namespace
