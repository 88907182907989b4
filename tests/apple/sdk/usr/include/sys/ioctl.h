#pragma once
#include <sys/cdefs.h>
#define TIOCGWINSZ 0x40087468
struct winsize {
    unsigned short ws_row, ws_col, ws_xpixel, ws_ypixel;
};
__BEGIN_DECLS
int ioctl(int, unsigned long, ...);
__END_DECLS
