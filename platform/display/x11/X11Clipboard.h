#pragma once

#include <string>

#include "X11Connection.h"

/// The CLIPBOARD selection, as UTF-8 text. What we put there is lost when the connection ends.
class X11Clipboard {
 public:
  explicit X11Clipboard(X11Connection& connection);
  ~X11Clipboard();
  X11Clipboard(const X11Clipboard&) = delete;
  X11Clipboard& operator=(const X11Clipboard&) = delete;

  /// Waits for the owner's answer, at most a quarter of a second; empty when none comes or it is no text.
  std::string text();
  void setText(const std::string& text);

  void handle(const XEvent& event);

 private:
  Time serverTime();
  /// False when the question asked at that time is refused or stays unanswered.
  bool waitForAnswer(Time asked);
  std::string takeTransfer();
  /// Writes the answer to one request; false when it cannot be given in that form.
  bool answer(const XSelectionRequestEvent& request, Atom property);

  X11Connection& connection_;
  Window window_;  // never shown; owns and receives
  bool owned_ = false;
  Time ownedSince_ = 0;
  std::string text_;
};
