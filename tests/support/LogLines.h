#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "NSLog.h"

/// Collects what is logged while it lives.
class LogLines {
 public:
  LogLines() : previous_(NSSetLogSink([this](std::string_view line) { lines_.emplace_back(line); })) {}
  ~LogLines() { NSSetLogSink(std::move(previous_)); }
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;

  const std::vector<std::string>& all() const { return lines_; }
  auto count(const std::string& part) const {
    return std::count_if(lines_.begin(), lines_.end(),
                         [&](const auto& line) { return line.find(part) != std::string::npos; });
  }
  std::vector<std::string> take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
  NSLogSink previous_;
};
