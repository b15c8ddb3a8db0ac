#pragma once

#include <memory>
#include <string>

#include "ChildProcess.h"

/// A Wayland desktop of the test's own, without a screen: sway, Xwayland on it, and a hand at a pointer that
/// the compositor takes for a device. What the hand did has reached the compositor when the call returns, an
/// X client soon after.
class WaylandDesktop {
 public:
  static constexpr int width = 1600, height = 1000;  // pixels

  /// Throws std::runtime_error when it does not start.
  WaylandDesktop();
  ~WaylandDesktop();
  WaylandDesktop(const WaylandDesktop&) = delete;
  WaylandDesktop& operator=(const WaylandDesktop&) = delete;

  /// The name of its X server, such as ":7".
  const std::string& server() const { return server_; }

  void pointTo(int x, int y);
  void moveBy(double dx, double dy);
  void press() { button(1); }
  void release() { button(0); }

 private:
  struct Hand;
  void button(unsigned state);

  std::string folder_;  // of its sockets
  std::unique_ptr<ChildProcess> sway_;
  std::string server_;
  std::unique_ptr<Hand> hand_;
};
