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
  auto symbols = plugin.parameters();
  for (const char* other : {"enabled", "render_quality"})
    if (plugin.has(other)) symbols.push_back(other);
  const std::string& symbol = symbols[random() % symbols.size()];
  plugin.control(symbol) =
      std::uniform_real_distribution(plugin.minimum(symbol), plugin.maximum(symbol))(random);
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
    isInstalled = RealTimeWatch::install();
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
  EXPECT_EQ(watch.seen(), (RealTimeFaults{2, 1, 1, __NR_getppid}));
}

TEST_P(RealTime, NothingIsAllocatedLockedOrAskedOfTheSystem) {
  if (!PluginFolder::shared().isHardRealTime(GetParam())) {
    EXPECT_EQ(GetParam(), "tmpt");  // Rubber Band allocates
    return;
  }
  LoadedPlugin plugin(GetParam());
  ASSERT_TRUE(plugin.isOpen());
  EXPECT_EQ(watched([&](RealTimeWatch& now) { storm(plugin, now); }).seen(), RealTimeFaults());
}
