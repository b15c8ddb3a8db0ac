#pragma once

/// While it lives, SIGINT and SIGTERM stop the current run loop instead of ending the program at once. Made
/// before any other thread is, so that none of them gets the signals. Main thread.
class TerminationSignals {
 public:
  TerminationSignals();
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  int descriptor_;
};
