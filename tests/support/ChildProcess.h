#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A program that the test starts, with its standard input, output and error at hand. Ended, if it still
/// runs, with this object.
class ChildProcess {
 public:
  /// `environment`: NAME=VALUE, beside this process's own.
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t id() const { return process_; }
  void write(const std::string& text);
  void closeInput();
  /// All output (standard output and error apart) until now, waiting at most `seconds` for `text` to be in
  /// it.
  bool waitForOutput(const std::string& text, double seconds);
  const std::string& output();
  const std::string& errors();
  void signal(int number);
  /// The exit status, 128 + signal when one ended it, −1 when it still runs after `seconds`.
  int wait(double seconds);

 private:
  void drain();

  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
  int status_ = -1;
  std::string outputText_;
  std::string errorText_;
};
