#pragma once

#include <sys/types.h>

#include <string>

/// A virtual X server of the test program's own, running while the program does.
class XServer {
 public:
  /// Starts it the first time; an empty name when it does not start (package xvfb).
  static const XServer& instance();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;
  ~XServer();

  /// Such as ":7".
  const std::string& name() const { return name_; }

  /// In pixels.
  static constexpr int width = 1280;
  static constexpr int height = 800;

 private:
  XServer();

  pid_t process_ = -1;
  std::string name_;
};
