#pragma once
#include <sys/types.h>
#define STDIN_FILENO 0
#define STDOUT_FILENO 1
#define STDERR_FILENO 2
#define R_OK 4
#define W_OK 2
#define _SC_NPROCESSORS_ONLN 58
__BEGIN_DECLS
int access(const char*, int);
void _exit(int) __attribute__((noreturn));
int close(int);
int dup(int);
int fsync(int);
int gethostname(char*, size_t);
pid_t getpid(void);
int isatty(int);
ssize_t read(int, void*, size_t);
int rmdir(const char*);
long sysconf(int);
int unlink(const char*);
ssize_t write(int, const void*, size_t);
__END_DECLS
