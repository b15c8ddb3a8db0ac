// Benchmarks. What counts are ratios between rows of one run: see docs/benchmarks.md.

#include <benchmark/benchmark.h>

#include "AppKitClasses.h"
#include "RegisterEffects.h"

int main(int argc, char** argv) {
  NSRegisterAppKitClasses();
  RegisterEffects();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
