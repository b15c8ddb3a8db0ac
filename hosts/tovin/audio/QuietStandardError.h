#pragma once

/// While it lives, what the process writes to standard error is lost: for libraries that print on their own
/// account. It concerns all threads, so keep it short.
class QuietStandardError {
 public:
  QuietStandardError();
  ~QuietStandardError();
  QuietStandardError(const QuietStandardError&) = delete;
  QuietStandardError& operator=(const QuietStandardError&) = delete;

 private:
  int saved_;  // -1: nothing was changed
};
