#pragma once

#include <string>

#include "AudioUnit.h"

/// Reads `ID VALUE` lines from standard input and changes parameters as a host's automation would. A line
/// that says something else is reported on standard error and changes nothing; the end of the input ends
/// nothing. A source of the current run loop while it lives. Main thread.
class AutomationInput {
 public:
  explicit AutomationInput(AudioUnit unit);
  ~AutomationInput();
  AutomationInput(const AutomationInput&) = delete;
  AutomationInput& operator=(const AutomationInput&) = delete;

 private:
  void readable();
  void line(const std::string& text);

  AudioUnit unit_;
  std::string pending_;
  long lineNumber_ = 0;
};
