#pragma once
#include <sys/cdefs.h>
typedef float float_t;
typedef double double_t;
#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define HUGE_VALL __builtin_huge_vall()
#define INFINITY HUGE_VALF
#define NAN __builtin_nanf("")
#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
#define FP_ILOGB0 (-2147483647 - 1)
#define FP_ILOGBNAN (-2147483647 - 1)
#define MATH_ERRNO 1
#define MATH_ERREXCEPT 2
#define math_errhandling 2
#define M_PI 3.14159265358979323846
// What there is for each of three types; F adds the suffix of the type to a name.
#define OZM_FUNCTIONS(T, F)                                                                                  \
    T F(acos)(T), F(acosh)(T), F(asin)(T), F(asinh)(T), F(atan)(T), F(atanh)(T), F(cbrt)(T), F(ceil)(T),     \
        F(cos)(T), F(cosh)(T), F(erf)(T), F(erfc)(T), F(exp)(T), F(exp2)(T), F(expm1)(T), F(fabs)(T),        \
        F(floor)(T), F(lgamma)(T), F(log)(T), F(log10)(T), F(log1p)(T), F(log2)(T), F(logb)(T),              \
        F(nearbyint)(T), F(rint)(T), F(round)(T), F(sin)(T), F(sinh)(T), F(sqrt)(T), F(tan)(T), F(tanh)(T),  \
        F(tgamma)(T), F(trunc)(T), F(atan2)(T, T), F(copysign)(T, T), F(fdim)(T, T), F(fmax)(T, T),          \
        F(fmin)(T, T), F(fmod)(T, T), F(hypot)(T, T), F(nextafter)(T, T), F(pow)(T, T), F(remainder)(T, T),  \
        F(fma)(T, T, T), F(frexp)(T, int*), F(ldexp)(T, int), F(modf)(T, T*), F(nan)(const char*),           \
        F(nexttoward)(T, long double), F(remquo)(T, T, int*), F(scalbln)(T, long), F(scalbn)(T, int);        \
    int F(ilogb)(T);                                                                                         \
    long F(lrint)(T), F(lround)(T);                                                                          \
    long long F(llrint)(T), F(llround)(T)
#define OZM_FLOAT(name) name##f
#define OZM_DOUBLE(name) name
#define OZM_LONG(name) name##l
__BEGIN_DECLS
OZM_FUNCTIONS(float, OZM_FLOAT);
OZM_FUNCTIONS(double, OZM_DOUBLE);
OZM_FUNCTIONS(long double, OZM_LONG);
__END_DECLS
#undef OZM_FUNCTIONS
#undef OZM_FLOAT
#undef OZM_DOUBLE
#undef OZM_LONG
