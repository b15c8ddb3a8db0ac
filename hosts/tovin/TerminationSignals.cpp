#include "TerminationSignals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "NSRunLoop.h"

namespace {

sigset_t terminationSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  return set;
}

}  // namespace

TerminationSignals::TerminationSignals() {
  const sigset_t set = terminationSignals();
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  descriptor_ = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
  NSRunLoop::currentRunLoop().addDescriptor(descriptor_, [this] {
    signalfd_siginfo info;
    while (read(descriptor_, &info, sizeof info) > 0) NSRunLoop::currentRunLoop().stop();
  });
}

TerminationSignals::~TerminationSignals() {
  NSRunLoop::currentRunLoop().removeDescriptor(descriptor_);
  close(descriptor_);
  const sigset_t set = terminationSignals();
  pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}
