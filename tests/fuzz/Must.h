#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What every input must keep: else a line on standard error and the end, which is how a target reports.
inline void must(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "It does not hold that %s\n", what.c_str());
  std::abort();
}

/// A target: takes any bytes and always answers 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
