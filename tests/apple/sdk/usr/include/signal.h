#pragma once
#include <pthread.h>
#include <sys/types.h>
typedef int sig_atomic_t;
typedef uint32_t sigset_t;
#define SIGHUP 1
#define SIGINT 2
#define SIGILL 4
#define SIGABRT 6
#define SIGFPE 8
#define SIGKILL 9
#define SIGSEGV 11
#define SIGPIPE 13
#define SIGTERM 15
#define SIGXFSZ 25
#define SIGUSR1 30
#define SIG_DFL (void (*)(int))0
#define SIG_IGN (void (*)(int))1
#define SIG_ERR ((void (*)(int)) - 1)
#define SIG_BLOCK 1
#define SIG_UNBLOCK 2
#define SIG_SETMASK 3
#define SA_RESTART 2
#define sa_handler __sigaction_u.__sa_handler
struct sigaction {
    union {
        void (*__sa_handler)(int);
        void (*__sa_sigaction)(int, void*, void*);
    } __sigaction_u;
    sigset_t sa_mask;
    int sa_flags;
};
__BEGIN_DECLS
int kill(pid_t, int);
int pthread_kill(pthread_t, int);
int pthread_sigmask(int, const sigset_t*, sigset_t*);
int raise(int);
int sigwait(const sigset_t*, int*);
int sigaction(int, const struct sigaction*, struct sigaction*);
int sigaddset(sigset_t*, int);
int sigemptyset(sigset_t*);
int sigfillset(sigset_t*);
void (*signal(int, void (*)(int)))(int);
__END_DECLS
