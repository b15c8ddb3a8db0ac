// The plug-ins in a ready-made host: jalv.gtk3, on a JACK server that plays to nobody.

#include <gtest/gtest.h>
#include <unistd.h>

#include "ChildProcess.h"
#include "Eventually.h"
#include "LoadedPlugin.h"
#include "X11User.h"

namespace {

constexpr int menuHeight = 25;                  // of jalv's own menu, above the editor
constexpr unsigned long background = 0xf2f3f5;  // of an editor, near its top
const std::string serverName = "tovin-tests-" + std::to_string(getpid());

/// For the JACK server and for jalv. Plug-ins that are built with the sanitizer bring it along late.
const std::vector<std::string> environment{"LV2_PATH=" TOVIN_LV2 "/..", "JACK_DEFAULT_SERVER=" + serverName,
                                           "JACK_NO_AUDIO_RESERVATION=1",
                                           "ASAN_OPTIONS=detect_leaks=0:verify_asan_link_order=0"};

TEST(Jalv, ShowsEveryEditor) {
  X11User user;
  user.warpTo(1200, 700);
  ChildProcess jack({"jackd", "-n", serverName, "-r", "-m", "-d", "dummy", "-r", "48000", "-p", "256"},
                    environment);
  ASSERT_EQ(ChildProcess({"jack_wait", "-s", serverName, "-w", "-t", "10"}).wait(20), 0) << jack.errors();

  for (const std::string& code : pluginCodes()) {
    SCOPED_TRACE(code);
    ChildProcess host({"jalv.gtk3", "urn:tovin:lv2:" + code}, environment);
    Window window = None;
    ASSERT_TRUE(eventually([&] { return (window = user.windowOf(host.id())) != None; }, 20)) << host.errors();
    // Jalv shows sliders of its own when it gets no editor.
    EXPECT_TRUE(eventually([&] { return user.colorAt(2, menuHeight + 2) == background; }));
    user.closePolitely(window);
    EXPECT_EQ(host.wait(20), 0) << host.errors();
  }
}

}  // namespace
