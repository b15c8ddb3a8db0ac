// run() under watch, while everything that has a port changes.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <lv2/core/lv2.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <mutex>
#include <random>

#include "AllocationCount.h"
#include "LoadedPlugin.h"

namespace {

size_t locks = 0;

/// From now on every system call but the last ends the process.
bool forbidSystemCalls() {
  sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_exit_group, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
  };
  const sock_fprog program{sizeof filter / sizeof *filter, filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// In the child of a death test: exits with 1 for calls of the heap, 2 for locks, 3 for both, 4 when the
/// kernel has no filters. By the bare call, since sanitizers ask the system before a function that does not
/// return.
template <class Function>
void watch(Function&& function) {
  const size_t heapBefore = heapCallsOfThread(), locksBefore = locks;
  if (!forbidSystemCalls()) syscall(SYS_exit_group, 4);
  function();
  syscall(SYS_exit_group, (heapCallsOfThread() > heapBefore ? 1 : 0) + (locks > locksBefore ? 2 : 0));
}

class RealTime : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Listed, RealTime, testing::ValuesIn(pluginCodes()));

}  // namespace

extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  // Looked for once: looking may take memory.
  static const auto real =
      reinterpret_cast<int (*)(pthread_mutex_t*)>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
  ++locks;
  return real(mutex);
}

TEST(Watch, SeesWhatItIsMeantToSee) {
  void* (*volatile take)(size_t) = &std::malloc;  // volatile, or the compiler leaves them out
  void (*volatile giveBack)(void*) = &std::free;
  giveBack(take(100));  // the heap asks the system for memory
  std::mutex mutex;
  mutex.lock();
  mutex.unlock();
  EXPECT_EXIT(watch([] {}), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(watch([&] { giveBack(take(100)); }), testing::ExitedWithCode(1), "");
  EXPECT_EXIT(watch([&] { mutex.lock(); }), testing::ExitedWithCode(2), "");
  EXPECT_EXIT(watch([] { getppid(); }), testing::KilledBySignal(SIGSYS), "");
}

TEST_P(RealTime, NothingIsAllocatedLockedOrAskedOfTheSystem) {
  const bool isPromised =
      lilv_plugin_has_feature(listedPlugin(GetParam()), uriNode(LV2_CORE__hardRTCapable).get());
  EXPECT_EQ(isPromised, GetParam() != "tmpt");  // Rubber Band allocates
  if (!isPromised) return;
  constexpr uint32_t longestBlock = 2000;
  LoadedPlugin plugin(GetParam());
  plugin.tellTempo(120);  // makes known what it says
  std::mt19937 random(7);
  std::vector<float> left(longestBlock), right(longestBlock, -0.25f);
  float* const channels[] = {left.data(), right.data()};
  const auto storm = [&] {
    for (int i = 0; i < 1000; ++i) {
      auto& port = plugin.port(plugin.inputs()[random() % plugin.inputs().size()]);
      port.value = std::uniform_real_distribution(port.minimum, port.maximum)(random);
      if (random() % 4 == 0) plugin.tellTempo(static_cast<float>(random() % 200));
      for (float& sample : left) sample = static_cast<float>(random() % 2000) / 1000.0f - 1;
      plugin.run(channels, channels, static_cast<uint32_t>(random() % (i % 10 ? 300 : longestBlock)));
    }
  };
  EXPECT_EXIT(watch(storm), testing::ExitedWithCode(0), "");
}
