#pragma once
#include <sys/cdefs.h>
typedef void* nl_catd;
#define NL_CAT_LOCALE 1
__BEGIN_DECLS
char* catgets(nl_catd, int, int, const char*);
int catclose(nl_catd);
nl_catd catopen(const char*, int);
__END_DECLS
