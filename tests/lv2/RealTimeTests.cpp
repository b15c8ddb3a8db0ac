// run() under watch, while everything that has a port changes.

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <random>
#include <thread>

#include "LoadedPlugin.h"
#include "RealTimeWatch.h"

namespace {

constexpr int changes = 1000;
constexpr uint32_t longestBlock = 2000;

void changeSomething(LoadedPlugin& plugin, std::mt19937& random) {
  size_t port;
  do port = random() % plugin.symbols().size();
  while (!plugin.isControlInput(port));
  constexpr float qualities[] = {0, 32, 64, 96, 127};
  if (plugin.symbols()[port] == "render_quality")
    plugin.control(port) = qualities[random() % 5];
  else if (plugin.symbols()[port] == "enabled")
    plugin.control(port) = static_cast<float>(random() % 2);
  else
    plugin.control(port) = std::uniform_real_distribution(plugin.minimum(port), plugin.maximum(port))(random);
  if (plugin.has("tempo") && random() % 4 == 0) plugin.tellTempo(static_cast<float>(random() % 200));
}

void storm(LoadedPlugin& plugin, RealTimeWatch& watch) {
  std::mt19937 random(7);
  std::vector<float> left(longestBlock, 0.5f), right(longestBlock, -0.25f);
  float* const channels[] = {left.data(), right.data()};
  plugin.activate();
  for (int i = 0; i < changes; ++i) {
    changeSomething(plugin, random);
    for (float& sample : left) sample = static_cast<float>(random() % 2000) / 1000.0f - 1;
    const auto frames = static_cast<uint32_t>(random() % (i % 10 == 0 ? longestBlock : 300));
    watch.begin();
    plugin.run(channels, channels, frames);
    watch.end();
  }
}

/// On a thread of its own, since a watched thread remains so.
template <class Function>
RealTimeWatch watched(Function&& function) {
  RealTimeWatch watch;
  bool isInstalled = false;
  std::thread([&] {
    isInstalled = watch.install();
    if (isInstalled) function(watch);
  }).join();
  EXPECT_TRUE(isInstalled);
  return watch;
}

class RealTime : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Listed, RealTime, testing::ValuesIn(PluginFolder::shared().codes()));

}  // namespace

TEST(Watch, SeesWhatItIsMeantToSee) {
  pid_t parent = 0;
  const RealTimeWatch watch = watched([&](RealTimeWatch& now) {
    std::mutex mutex;
    void* (*volatile take)(size_t) = &std::malloc;  // volatile, or the compiler leaves them out
    void (*volatile giveBack)(void*) = &std::free;
    giveBack(take(100));  // the thread's heap asks the system for memory
    now.begin();
    giveBack(take(100));
    mutex.lock();
    parent = getppid();
    mutex.unlock();
    now.end();
  });
  EXPECT_EQ(parent, getppid()) << "a call must be carried out too";
  EXPECT_EQ(watch.ours().heapCalls, 2u);
  EXPECT_EQ(watch.ours().locks, 1u);
  EXPECT_EQ(watch.ours().systemCalls, 1u);
  EXPECT_EQ(watch.ours().lastSystemCall, __NR_getppid);
}

TEST_P(RealTime, NothingIsAllocatedLockedOrAskedOfTheSystem) {
  LoadedPlugin plugin(GetParam());
  ASSERT_TRUE(plugin.isOpen());
  const RealTimeWatch watch = watched([&](RealTimeWatch& now) { storm(plugin, now); });
  EXPECT_EQ(watch.ours().heapCalls, 0u);
  EXPECT_EQ(watch.ours().locks, 0u);
  EXPECT_EQ(watch.ours().systemCalls, 0u) << "number " << watch.ours().lastSystemCall;

  const RealTimeFaults& outside = watch.rubberBands();
  RecordProperty("RubberBandHeapCalls", static_cast<int>(outside.heapCalls));
  EXPECT_TRUE(GetParam() == "tmpt" || outside.total() == 0);
  if (outside.total() > 0)
    std::cout << "Rubber Band: " << outside.heapCalls << " heap calls, " << outside.locks << " locks, "
              << outside.systemCalls << " system calls (last " << outside.lastSystemCall << ")\n";
}
