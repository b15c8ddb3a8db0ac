#include "ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace {

constexpr int width = 40;

}  // namespace

ProgressBar::ProgressBar() : visible_(isatty(STDERR_FILENO)) {}

ProgressBar::~ProgressBar() {
  if (shown_ >= 0) std::cerr << "\r" << std::string(width + 8, ' ') << "\r" << std::flush;
}

void ProgressBar::show(double fraction) {
  if (!visible_) return;
  const int percent = std::clamp(static_cast<int>(fraction * 100), 0, 100);
  if (percent == shown_) return;
  shown_ = percent;
  const int filled = percent * width / 100;
  std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, '.') << "] " << percent
            << " %" << std::flush;
}
