#pragma once
#include <time.h>
struct stat {
    dev_t st_dev;
    mode_t st_mode;
    nlink_t st_nlink;
    ino_t st_ino;
    uid_t st_uid;
    gid_t st_gid;
    dev_t st_rdev;
    struct timespec st_atimespec, st_mtimespec, st_ctimespec, st_birthtimespec;
    off_t st_size;
    blkcnt_t st_blocks;
    blksize_t st_blksize;
    uint32_t st_flags, st_gen;
    int32_t st_lspare;
    int64_t st_qspare[2];
};
#define S_IFMT 0170000
#define S_ISDIR(m) (((m)&S_IFMT) == 0040000)
#define S_ISREG(m) (((m)&S_IFMT) == 0100000)
#define S_ISLNK(m) (((m)&S_IFMT) == 0120000)
__BEGIN_DECLS
int chmod(const char*, mode_t);
int fchmod(int, mode_t);
int fstat(int, struct stat*);
int lstat(const char*, struct stat*);
int mkdir(const char*, mode_t);
int stat(const char*, struct stat*);
__END_DECLS
