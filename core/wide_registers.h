// Marovia Sondrel - positions of web sites in search engine results
#pragma once

// A function marked so is compiled a second time for processors with 256-bit registers, and the one that fits
// is chosen when the program starts. What it calls has to be inlined to gain from that. Sanitizers are not
// ready yet when the choice is made.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) &&                 \
    !defined(__SANITIZE_ADDRESS__)
#define SONDREL_WIDE_REGISTERS __attribute__((target_clones("avx2", "default")))
#else
#define SONDREL_WIDE_REGISTERS
#endif

// Always, so that it becomes part of each of the two.
#define SONDREL_INLINE __attribute__((always_inline)) inline
