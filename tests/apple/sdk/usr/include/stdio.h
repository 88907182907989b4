#pragma once
#include <stdarg.h>
#include <stddef.h>
#include <sys/types.h>
typedef struct __sFILE FILE;
typedef off_t fpos_t;
#define EOF (-1)
#define BUFSIZ 1024
#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2
#define FILENAME_MAX 1024
#define FOPEN_MAX 20
#define L_tmpnam 1024
#define TMP_MAX 308915776
#define _IOFBF 0
#define _IOLBF 1
#define _IONBF 2
#define stdin __stdinp
#define stdout __stdoutp
#define stderr __stderrp
__BEGIN_DECLS
extern FILE* __stdinp;
extern FILE* __stdoutp;
extern FILE* __stderrp;
void clearerr(FILE*);
int fclose(FILE*);
FILE* fdopen(int, const char*);
int feof(FILE*);
int ferror(FILE*);
int fflush(FILE*);
int fgetc(FILE*);
int fgetpos(FILE*, fpos_t*);
char* fgets(char*, int, FILE*);
int fileno(FILE*);
FILE* fopen(const char*, const char*);
int fprintf(FILE*, const char*, ...) __attribute__((format(printf, 2, 3)));
int fputc(int, FILE*);
int fputs(const char*, FILE*);
size_t fread(void*, size_t, size_t, FILE*);
FILE* freopen(const char*, const char*, FILE*);
int fscanf(FILE*, const char*, ...);
int fseek(FILE*, long, int);
int fseeko(FILE*, off_t, int);
int fsetpos(FILE*, const fpos_t*);
long ftell(FILE*);
off_t ftello(FILE*);
size_t fwrite(const void*, size_t, size_t, FILE*);
int getc(FILE*);
int getchar(void);
void perror(const char*);
int printf(const char*, ...) __attribute__((format(printf, 1, 2)));
int putc(int, FILE*);
int putchar(int);
int puts(const char*);
int remove(const char*);
int rename(const char*, const char*);
void rewind(FILE*);
int scanf(const char*, ...);
void setbuf(FILE*, char*);
int setvbuf(FILE*, char*, int, size_t);
int snprintf(char*, size_t, const char*, ...) __attribute__((format(printf, 3, 4)));
int sprintf(char*, const char*, ...) __attribute__((format(printf, 2, 3)));
int sscanf(const char*, const char*, ...);
FILE* tmpfile(void);
char* tmpnam(char*);
int ungetc(int, FILE*);
int vfprintf(FILE*, const char*, va_list);
int vfscanf(FILE*, const char*, va_list);
int vprintf(const char*, va_list);
int vscanf(const char*, va_list);
int vsnprintf(char*, size_t, const char*, va_list);
int vsprintf(char*, const char*, va_list);
int vsscanf(const char*, const char*, va_list);
int vasprintf(char**, const char*, va_list);
int asprintf(char**, const char*, ...);
__END_DECLS
