#include "RealTimeWatch.h"

#include <dlfcn.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>

#include <csignal>
#include <cstddef>
#include <cstdint>

#include "AllocationCount.h"

// The only place from which the filter lets system calls through. The C library's own function for them will
// not do: others call it as well.
extern "C" long unfilteredCall(long number, ...);
#if defined(__x86_64__)
asm(R"(
unfilteredCall:
  movq %rdi, %rax
  movq %rsi, %rdi
  movq %rdx, %rsi
  movq %rcx, %rdx
  movq %r8, %r10
  movq %r9, %r8
  movq 8(%rsp), %r9
  syscall
  ret
)");
#elif defined(__aarch64__)
asm(R"(
unfilteredCall:
  mov x8, x0
  mov x0, x1
  mov x1, x2
  mov x2, x3
  mov x3, x4
  mov x4, x5
  mov x5, x6
  svc #0
  ret
)");
#else
#error "how is a system call made here?"
#endif

namespace {

constexpr uint32_t unfilteredBytes = 36;

thread_local size_t locks = 0;
thread_local size_t systemCalls = 0;
thread_local long lastSystemCall = -1;

void carryOut(int, siginfo_t* info, void* context) {
  ++systemCalls;
  lastSystemCall = info->si_syscall;
  auto& machine = static_cast<ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  auto* r = machine.gregs;
  r[REG_RAX] =
      unfilteredCall(info->si_syscall, r[REG_RDI], r[REG_RSI], r[REG_RDX], r[REG_R10], r[REG_R8], r[REG_R9]);
#else
  auto* r = machine.regs;
  r[0] = static_cast<unsigned long>(unfilteredCall(info->si_syscall, r[0], r[1], r[2], r[3], r[4], r[5]));
#endif
}

template <class Lock>
int counted(const char* function, Lock* lock) {
  ++locks;
  return reinterpret_cast<int (*)(Lock*)>(dlsym(RTLD_NEXT, function))(lock);
}

}  // namespace

extern "C" {
int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  return counted("pthread_mutex_lock", mutex);
}
int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
  return counted("pthread_mutex_trylock", mutex);
}
int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
  return counted("pthread_rwlock_rdlock", lock);
}
int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
  return counted("pthread_rwlock_wrlock", lock);
}
}

bool RealTimeWatch::install() {
  struct sigaction action = {};
  action.sa_sigaction = &carryOut;
  action.sa_flags = SA_SIGINFO;
  sigaction(SIGSYS, &action, nullptr);
  const auto start = reinterpret_cast<uint64_t>(&unfilteredCall);
  const auto low = static_cast<uint32_t>(start), high = static_cast<uint32_t>(start >> 32);
  constexpr uint32_t number = offsetof(seccomp_data, nr), place = offsetof(seccomp_data, instruction_pointer);
  sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, number),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_rt_sigreturn, 5, 0),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place + 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, high, 0, 4),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place),
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, low, 0, 2),
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, low + unfilteredBytes, 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
  };
  const sock_fprog program{sizeof filter / sizeof *filter, filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

void RealTimeWatch::begin() {
  before_ = {heapCallsOfThread(), locks, systemCalls};
}

void RealTimeWatch::end() {
  seen_.heapCalls += heapCallsOfThread() - before_.heapCalls;
  seen_.locks += locks - before_.locks;
  seen_.systemCalls += systemCalls - before_.systemCalls;
  if (systemCalls > before_.systemCalls) seen_.lastSystemCall = lastSystemCall;
}
