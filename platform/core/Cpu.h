// What the processor at hand can do beyond the x86-64 baseline.
#pragma once

// A function that is compiled twice, once with __attribute__((target("avx2"))) where __x86_64__ is defined,
// asks this at run time. Both must give identical results.
inline bool HasAvx2() {
#ifdef __x86_64__
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
#else
    return false;
#endif
}
