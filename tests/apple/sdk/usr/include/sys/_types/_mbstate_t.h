#pragma once
#include <sys/_types.h>
typedef __mbstate_t mbstate_t;
