#pragma once

#include "ChildProcess.h"
#include "X11Hands.h"

/// The window of `tovin open EFFECT --log`, shown, with hands at it. The program is ended with this object.
class OpenedEditor : public X11Hands {
 public:
  /// Further words of the command, and NAME=VALUE for its environment. Throws std::runtime_error when no
  /// window comes.
  explicit OpenedEditor(const std::string& effect, const std::vector<std::string>& words = {},
                        const std::vector<std::string>& environment = {},
                        const std::string& server = X11User::virtualServer());

  void advance(double seconds) override;
  /// By its standard input.
  void set(unsigned parameter, float value) override;
  /// As printed; the program tells of no gestures.
  Lines heard() override;

  ChildProcess host;
  Window window = None;

 private:
  void arrive() override;

  Lines heard_;
  size_t read_ = 0;  // bytes of the output
  int questions_ = 0;
};
