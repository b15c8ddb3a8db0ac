// run() under watch, while everything that has a port changes.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <lv2/core/lv2.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <csignal>
#include <mutex>
#include <random>
#include <thread>

#include "AllocationCount.h"
#include "LoadedPlugin.h"

namespace {

/// Calls that an audio thread must not make, counted.
struct Calls {
  size_t heap = 0, locks = 0, system = 0;
  bool operator==(const Calls&) const = default;
};

thread_local size_t locks = 0, systemCalls = 0;

// The filter lets calls through that have this as their sixth argument. The few that look at it take it: as
// an offset into anonymous memory, of which there is none, or as a mask of which any bit will do.
constexpr long letThrough = 0x5af0000;

void carryOut(int, siginfo_t* info, void* context) {
  ++systemCalls;
  const int before = errno;
  auto& machine = static_cast<ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  auto* r = machine.gregs;
  auto& result = r[REG_RAX];
  const long arguments[] = {r[REG_RDI], r[REG_RSI], r[REG_RDX], r[REG_R10], r[REG_R8]};
#else
  auto* arguments = machine.regs;
  auto& result = machine.regs[0];
#endif
  const long done = syscall(info->si_syscall, arguments[0], arguments[1], arguments[2], arguments[3],
                            arguments[4], letThrough);
  result = static_cast<std::remove_reference_t<decltype(result)>>(done == -1 ? -errno : done);
  errno = before;
}

/// From now on each system call of this thread becomes a signal, whose handler counts it and carries it out.
/// Threads must not be made by it. False when the kernel has no filters.
bool filterSystemCalls() {
  struct sigaction action = {};
  action.sa_sigaction = &carryOut;
  action.sa_flags = SA_SIGINFO;
  sigaction(SIGSYS, &action, nullptr);
  sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_rt_sigreturn, 2, 0),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[5])),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, letThrough, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
  };
  const sock_fprog program{sizeof filter / sizeof *filter, filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

template <class Function>
void count(Calls& calls, Function&& function) {
  const Calls before{heapCallsOfThread(), locks, systemCalls};
  function();
  calls.heap += heapCallsOfThread() - before.heap;
  calls.locks += locks - before.locks;
  calls.system += systemCalls - before.system;
}

/// On a thread of its own, since a watched thread remains so.
template <class Function>
void watched(Function&& function) {
  std::thread([&] {
    ASSERT_TRUE(filterSystemCalls());
    function();
  }).join();
}

void changeSomething(LoadedPlugin& plugin, std::mt19937& random) {
  const std::string& symbol = plugin.inputs()[random() % plugin.inputs().size()];
  plugin.control(symbol) =
      std::uniform_real_distribution(plugin.minimum(symbol), plugin.maximum(symbol))(random);
  if (plugin.has("tempo") && random() % 4 == 0) plugin.tellTempo(static_cast<float>(random() % 200));
}

class RealTime : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Listed, RealTime, testing::ValuesIn(pluginCodes()));

}  // namespace

extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  ++locks;
  return reinterpret_cast<int (*)(pthread_mutex_t*)>(dlsym(RTLD_NEXT, "pthread_mutex_lock"))(mutex);
}

TEST(Watch, SeesWhatItIsMeantToSee) {
  Calls seen;
  pid_t parent = 0;
  watched([&] {
    std::mutex mutex;
    void* (*volatile take)(size_t) = &std::malloc;  // volatile, or the compiler leaves them out
    void (*volatile giveBack)(void*) = &std::free;
    giveBack(take(100));  // the thread's heap asks the system for memory
    count(seen, [&] {
      giveBack(take(100));
      const std::lock_guard lock(mutex);
      parent = getppid();
    });
  });
  EXPECT_EQ(parent, getppid()) << "a call must be carried out too";
  EXPECT_EQ(seen, (Calls{2, 1, 1}));
}

TEST_P(RealTime, NothingIsAllocatedLockedOrAskedOfTheSystem) {
  const bool isPromised =
      lilv_plugin_has_feature(listedPlugin(GetParam()), uriNode(LV2_CORE__hardRTCapable).get());
  EXPECT_EQ(isPromised, GetParam() != "tmpt");  // Rubber Band allocates
  if (!isPromised) return;
  constexpr uint32_t longestBlock = 2000;
  LoadedPlugin plugin(GetParam());
  std::mt19937 random(7);
  std::vector<float> left(longestBlock), right(longestBlock, -0.25f);
  float* const channels[] = {left.data(), right.data()};
  Calls seen;
  watched([&] {
    for (int i = 0; i < 1000; ++i) {
      changeSomething(plugin, random);
      for (float& sample : left) sample = static_cast<float>(random() % 2000) / 1000.0f - 1;
      const auto frames = static_cast<uint32_t>(random() % (i % 10 == 0 ? longestBlock : 300));
      count(seen, [&] { plugin.run(channels, channels, frames); });
    }
  });
  EXPECT_EQ(seen, Calls());
}
