#pragma once
#include <sys/cdefs.h>
#define POLLIN 0x0001
#define POLLOUT 0x0004
#define POLLERR 0x0008
#define POLLHUP 0x0010
typedef unsigned int nfds_t;
struct pollfd {
    int fd;
    short events, revents;
};
__BEGIN_DECLS
int poll(struct pollfd*, nfds_t, int);
__END_DECLS
