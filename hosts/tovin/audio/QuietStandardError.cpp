#include "QuietStandardError.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

QuietStandardError::QuietStandardError() : saved_(-1) {
  std::fflush(stderr);
  const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nothing < 0) return;
  saved_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
  if (saved_ >= 0) dup2(nothing, STDERR_FILENO);
  close(nothing);
}

QuietStandardError::~QuietStandardError() {
  std::fflush(stderr);
  if (saved_ < 0) return;
  dup2(saved_, STDERR_FILENO);
  close(saved_);
}
