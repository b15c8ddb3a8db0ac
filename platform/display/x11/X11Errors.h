#pragma once

#include <functional>
#include <memory>

#include "X11Headers.h"

/// Takes the errors of one connection, from the moment it is made until it dies, so that none of them
/// reaches Xlib's process-wide handler (which would end the process, or belong to a host). Nothing
/// process-wide is touched. Errors about windows that are gone are normal in an embedded window, whose parent
/// dies when it likes, and are silent; others are logged once.
class X11Errors {
 public:
  explicit X11Errors(XConnection* x);
  ~X11Errors();
  X11Errors(const X11Errors&) = delete;
  X11Errors& operator=(const X11Errors&) = delete;

  /// Makes the requests, waits for the server, and tells whether it refused one of them. Logs nothing.
  bool refused(const std::function<void()>& requests);

 private:
  struct Hook;
  std::unique_ptr<Hook> hook_;
};
