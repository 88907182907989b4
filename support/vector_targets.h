// The instruction sets for which vector code is compiled, and the choice between them at run time. Include
// this file before Highway's headers, because it defines macros that configure them.
//
// Highway can choose at run time itself, but only with its library, which calibrates the clock whenever a
// program starts. Highway disables its portable fallback for GCC before 12.3, because of a fault in the
// multiplication that returns the high half. The vector code does not use that, so the fallback is enabled
// here.
#pragma once

#define HWY_BROKEN_EMU128 0
#if defined(__x86_64__)
#define HWY_BASELINE_TARGETS HWY_EMU128
#define HWY_DISABLED_TARGETS (~(HWY_AVX3 | HWY_AVX2 | HWY_SSE4 | HWY_EMU128))
#else
#define HWY_COMPILE_ONLY_STATIC
// The code keeps vectors in arrays, which the vectors of these sets, sized at run time, do not permit.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#endif

#if defined(__x86_64__)
namespace ozm::support {

/// The instruction sets for x86-64, the fastest first.
enum class VectorTarget { AVX3, AVX2, SSE4, Portable };

/// The fastest set that this processor supports. It also supports the sets after it.
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
