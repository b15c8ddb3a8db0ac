// The plug-ins in a ready-made host: jalv.gtk3, on a JACK server that plays to nobody.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "ChildProcess.h"
#include "Eventually.h"
#include "LoadedPlugin.h"
#include "X11User.h"

namespace {

constexpr int menuHeight = 25;                  // of jalv's own menu, above the editor
constexpr unsigned long background = 0xf2f3f5;  // of an editor, near its top
const std::string serverName = "tovin-tests-" + std::to_string(getpid());

/// For the JACK server and for jalv. Plug-ins that are built with the sanitizer bring it along late.
const std::vector<std::string> environment{"JACK_DEFAULT_SERVER=" + serverName, "JACK_NO_AUDIO_RESERVATION=1",
                                           "ASAN_OPTIONS=detect_leaks=0:verify_asan_link_order=0"};

TEST(Jalv, ShowsEveryEditorAndLeavesNothingBehind) {
  X11User user;
  user.warpTo(1200, 700);
  setenv("LV2_PATH", std::filesystem::path(TOVIN_LV2).parent_path().c_str(), 1);
  ChildProcess jack({"jackd", "-n", serverName, "-r", "-m", "-d", "dummy", "-r", "48000", "-p", "256"},
                    environment);
  ASSERT_EQ(ChildProcess({"jack_wait", "-s", serverName, "-w", "-t", "10"}).wait(20), 0) << jack.errors();

  unsigned resources = 0;  // windows, shared memory and all else, after the first
  for (const std::string& code : pluginCodes()) {
    SCOPED_TRACE(code);
    ChildProcess host({"jalv.gtk3", "urn:tovin:lv2:" + code}, environment);
    Window window = None;
    ASSERT_TRUE(eventually([&] { return (window = user.windowOf(host.id())) != None; }, 20)) << host.errors();
    // Jalv shows sliders of its own when it gets no editor.
    const auto isDrawn = [&] {
      return user.colorAt(2, menuHeight + 2) == background && user.colorsIn(0, menuHeight, 300, 130) > 100;
    };
    EXPECT_TRUE(eventually(isDrawn)) << std::hex << user.colorAt(2, menuHeight + 2);
    user.closePolitely(window);
    EXPECT_EQ(host.wait(20), 0) << host.errors();
    if (resources == 0) resources = user.resources();
  }
  EXPECT_TRUE(eventually([&] { return user.resources() <= resources; }));
  jack.signal(SIGTERM);  // killed, it would stay in the list of servers, which is short
  EXPECT_GE(jack.wait(10), 0) << jack.errors();
}

}  // namespace
