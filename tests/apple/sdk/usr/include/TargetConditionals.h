// Clang defines TARGET_OS_IOS and the others by itself.
#pragma once
