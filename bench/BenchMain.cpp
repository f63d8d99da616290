// One entry point for every benchmark file of this folder.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
