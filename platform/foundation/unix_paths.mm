// GNUstep takes "\" for a separator and "c:" for a drive unless it is told otherwise. As on Apple's systems,
// they are characters of a file's name like any other.
#import <Foundation/Foundation.h>

extern "C" const char* GSPathHandling(const char* mode); // documented, but in no header

namespace {

__attribute__((constructor)) void useUnixPaths() { GSPathHandling("unix"); }

} // namespace
