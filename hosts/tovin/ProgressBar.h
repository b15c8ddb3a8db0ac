#pragma once

/// A bar on standard error, when that is a terminal; nothing otherwise. It wipes itself out at the end.
class ProgressBar {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// 0 to 1. Draws only when the bar's look changes.
  void show(double fraction);

 private:
  const bool visible_;
  int shown_ = -1;
};
