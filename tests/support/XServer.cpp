#include "XServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

const XServer& XServer::instance() {
  static const XServer server;
  return server;
}

XServer::XServer() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return;
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const std::string out = std::to_string(ends[1]);
    if (const int quiet = open("/dev/null", O_WRONLY); quiet >= 0) dup2(quiet, STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", out.c_str(), "-screen", "0", screen.c_str(), "-nolisten", "tcp",
           "-noreset", nullptr);
    _exit(127);
  }
  close(ends[1]);
  std::string number;
  for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) number += c;
  close(ends[0]);
  if (!number.empty()) name_ = ":" + number;
}

XServer::~XServer() {
  if (process_ <= 0) return;
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}
