// Which instruction sets the vector code is compiled for, and which of them this machine runs. To be included
// before Highway's headers, whose macros it sets.
//
// The best set is chosen when the program runs: here, because Highway's own choice would need its library,
// which measures the machine's clock whenever a program starts. The portable fallback also works with GCC
// before 12.3: what Highway guards against there is a high-half multiplication, which the vector code does
// not use.
#pragma once

#define HWY_BROKEN_EMU128 0
#if defined(__x86_64__)
#define HWY_BASELINE_TARGETS HWY_EMU128
#define HWY_DISABLED_TARGETS (~(HWY_AVX3 | HWY_AVX2 | HWY_SSE4 | HWY_EMU128))
#else
#define HWY_COMPILE_ONLY_STATIC
// Vectors of a size known only at run time cannot be held in arrays.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#endif

#if defined(__x86_64__)
namespace ozm::support {

/// The instruction sets of x86-64, the fastest first.
enum class VectorTarget { AVX3, AVX2, SSE4, Portable };

/// The fastest one that this processor runs; it runs all after it, too.
inline VectorTarget FastestVectorTarget() {
    if (!__builtin_cpu_supports("sse4.2")) return VectorTarget::Portable;
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("bmi2") ||
        !__builtin_cpu_supports("fma")) {
        return VectorTarget::SSE4;
    }
    const bool hasAVX3 = __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
                         __builtin_cpu_supports("avx512vl");
    return hasAVX3 ? VectorTarget::AVX3 : VectorTarget::AVX2;
}

} // namespace ozm::support
#endif
