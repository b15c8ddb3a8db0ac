#include "ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point after(double seconds) {
  return Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

void breathe() {
  std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

void readAll(int fd, std::string& into) {
  char bytes[4096];
  for (ssize_t count; (count = read(fd, bytes, sizeof bytes)) > 0;)
    into.append(bytes, static_cast<size_t>(count));
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command,
                           const std::vector<std::string>& environment) {
  int in[2], out[2], err[2];
  if (pipe2(in, O_CLOEXEC) || pipe2(out, O_CLOEXEC) || pipe2(err, O_CLOEXEC)) std::abort();
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    dup2(err[1], STDERR_FILENO);
    for (const std::string& entry : environment) putenv(strdup(entry.c_str()));
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(strdup(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  close(err[1]);
  input_ = in[1];
  output_ = out[0];
  errors_ = err[0];
  fcntl(output_, F_SETFL, O_NONBLOCK);
  fcntl(errors_, F_SETFL, O_NONBLOCK);
  ::signal(SIGPIPE, SIG_IGN);  // a child that is gone already is told by its status
}

ChildProcess::~ChildProcess() {
  if (wait(0) == -1) {
    kill(process_, SIGKILL);
    wait(5);
  }
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

void ChildProcess::drain() {
  readAll(output_, outputText_);
  readAll(errors_, errorText_);
}

const std::string& ChildProcess::output() {
  drain();
  return outputText_;
}

const std::string& ChildProcess::errors() {
  drain();
  return errorText_;
}

bool ChildProcess::waitForOutput(const std::string& text, double seconds) {
  for (const auto end = after(seconds); Clock::now() < end; breathe())
    if (output().find(text) != std::string::npos) return true;
  return output().find(text) != std::string::npos;
}

void ChildProcess::signal(int number) {
  kill(process_, number);
}

int ChildProcess::wait(double seconds) {
  for (const auto end = after(seconds); status_ == -1;) {
    drain();
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) == process_)
      status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    else if (Clock::now() >= end)
      return -1;
    else
      breathe();
  }
  drain();
  return status_;
}
