#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A program that the test starts, with its standard input, output and error at hand. Ended, if it still
/// runs, with this object: asked first, killed after 5 seconds.
class ChildProcess {
 public:
  /// `environment`: NAME=VALUE, beside this process's own.
  explicit ChildProcess(const std::vector<std::string>& command,
                        const std::vector<std::string>& environment = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t id() const { return process_; }
  void write(const std::string& text);
  void closeInput();
  /// All that was printed until now.
  std::string output() const;
  std::string errors() const;
  /// Whether `text` is in the output, after at most `seconds`.
  bool waitForOutput(const std::string& text, double seconds) const;
  void signal(int number);
  /// The exit status, 128 + signal when one ended it, −1 when it still runs after `seconds`.
  int wait(double seconds);

 private:
  pid_t process_ = -1;
  int input_ = -1;
  const int output_, errors_;  // files in memory
  int status_ = -1;
};
