#include "Automation.h"

#include <algorithm>

#include "EffectBench.h"

Float32 automated(const EffectParameter& parameter, size_t index, int step) {
  const int half = 37 + 11 * static_cast<int>(index % 20);
  const int phase = step % (2 * half);
  return partOf(parameter, static_cast<float>(std::min(phase, 2 * half - phase)) / static_cast<float>(half));
}
