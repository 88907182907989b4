// What the tool asks of the system and Emscripten does not do, or does in another way than the systems that the tool
// runs on. Node does it instead.
#include <emscripten.h>
#include <emscripten/threading.h>
#include <errno.h>
#include <limits.h>
#include <math.h>
#include <pthread.h>
#include <signal.h>
#include <stdatomic.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

// Emscripten takes every standard stream for a terminal.
int isatty(int descriptor) { return EM_ASM_INT({ return require("tty").isatty($0) ? 1 : 0; }, descriptor); }

// It says 42.
pid_t getpid(void) { return EM_ASM_INT({ return process.pid; }); }

// It has no clock of a thread's processor time. Time that passes is never less.
int clock_gettime(clockid_t clock, struct timespec* time) {
    const double milliseconds = clock == CLOCK_REALTIME ? emscripten_date_now() : emscripten_get_now();
    const double seconds = floor(milliseconds / 1000);
    time->tv_sec = (time_t)seconds;
    time->tv_nsec = (long)((milliseconds - 1000 * seconds) * 1e6);
    return 0;
}

// Signals reach Node alone. It passes them to the thread that waits for them; unless they are blocked, they end the
// process.
static atomic_int signals_are_blocked, pending_signal;

static void deliver(int signal) {
    pending_signal = signal;
    emscripten_futex_wake(&pending_signal, INT_MAX);
}

EMSCRIPTEN_KEEPALIVE int deliver_signal(int signal) {
    if (!signals_are_blocked) return 0;
    deliver(signal);
    return 1;
}

// The tool blocks all the signals that Node passes, or none.
int pthread_sigmask(int how, const sigset_t* set, sigset_t* old) {
    (void)set;
    if (old) sigemptyset(old);
    signals_are_blocked = how == SIG_BLOCK;
    return 0;
}

int sigwait(const sigset_t* set, int* signal) {
    (void)set;
    while (pending_signal == 0) emscripten_futex_wait(&pending_signal, 0, INFINITY);
    *signal = atomic_exchange(&pending_signal, 0);
    return 0;
}

int pthread_kill(pthread_t thread, int signal) {
    (void)thread;
    deliver(signal);
    return 0;
}

int sigaction(int signal, const struct sigaction* action, struct sigaction* old) {
    (void)signal, (void)action;
    if (old) memset(old, 0, sizeof *old);
    return 0;
}

int raise(int signal) {
    MAIN_THREAD_EM_ASM({ endBySignal($0); }, signal);
    return 0;
}
