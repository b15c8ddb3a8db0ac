#pragma once

#include <string>

#include "AudioUnit.h"
#include "HostTempo.h"

/// Reads lines from standard input and does what a host's automation would: `ID VALUE` changes a parameter,
/// `tempo BPM` the host's tempo. A line that says something else is reported on standard error and changes
/// nothing; the end of the input ends nothing. A source of the current run loop while it lives. Main thread.
class AutomationInput {
 public:
  /// Both must outlive it.
  AutomationInput(AudioUnit unit, HostTempo& tempo);
  ~AutomationInput();
  AutomationInput(const AutomationInput&) = delete;
  AutomationInput& operator=(const AutomationInput&) = delete;

 private:
  void readable();
  void line(const std::string& text);

  AudioUnit unit_;
  HostTempo& tempo_;
  std::string pending_;
  long lineNumber_ = 0;
};
