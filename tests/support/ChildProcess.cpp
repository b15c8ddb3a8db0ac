#include "ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "Eventually.h"

namespace {

std::string textIn(int file) {
  struct stat status {};
  fstat(file, &status);
  std::string text(static_cast<size_t>(status.st_size), '\0');
  text.resize(static_cast<size_t>(pread(file, text.data(), text.size(), 0)));
  return text;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command,
                           const std::vector<std::string>& environment)
    : output_(memfd_create("output", MFD_CLOEXEC)), errors_(memfd_create("errors", MFD_CLOEXEC)) {
  int in[2];
  if (output_ < 0 || errors_ < 0 || pipe2(in, O_CLOEXEC)) std::abort();
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(in[0], STDIN_FILENO);
    dup2(output_, STDOUT_FILENO);
    dup2(errors_, STDERR_FILENO);
    for (const std::string& entry : environment) putenv(strdup(entry.c_str()));
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(strdup(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  close(in[0]);
  input_ = in[1];
  ::signal(SIGPIPE, SIG_IGN);  // a child that is gone already is told by its status
}

ChildProcess::~ChildProcess() {
  if (wait(0) == -1) signal(SIGTERM);
  if (wait(5) == -1) signal(SIGKILL);
  wait(5);
  closeInput();
  close(output_);
  close(errors_);
}

void ChildProcess::write(const std::string& text) {
  [[maybe_unused]] const ssize_t written = ::write(input_, text.data(), text.size());
}

void ChildProcess::closeInput() {
  if (input_ >= 0) close(input_);
  input_ = -1;
}

std::string ChildProcess::output() const {
  return textIn(output_);
}

std::string ChildProcess::errors() const {
  return textIn(errors_);
}

bool ChildProcess::waitForOutput(const std::string& text, double seconds) const {
  return eventually([&] { return output().find(text) != std::string::npos; }, seconds);
}

void ChildProcess::signal(int number) {
  kill(process_, number);
}

int ChildProcess::wait(double seconds) {
  const auto hasEnded = [this] {
    int status = 0;
    if (status_ == -1 && waitpid(process_, &status, WNOHANG) == process_)
      status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return status_ != -1;
  };
  eventually(hasEnded, seconds);
  return status_;
}
