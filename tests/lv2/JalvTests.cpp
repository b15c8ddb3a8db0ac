// The plug-ins in a ready-made host: jalv.gtk3, on a JACK server that plays to nobody.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>

#include "ChildProcess.h"
#include "JackProbe.h"
#include "LoadedPlugin.h"
#include "X11Fixture.h"

namespace {

constexpr int menuHeight = 25;  // of jalv's own menu, above the editor
const std::string serverName = "tovin-tests-" + std::to_string(getpid());

/// For the JACK server and for jalv. Plug-ins that are built with the sanitizer bring it along late.
const std::vector<std::string> environment{"JACK_DEFAULT_SERVER=" + serverName, "JACK_NO_AUDIO_RESERVATION=1",
                                           "ASAN_OPTIONS=detect_leaks=0:verify_asan_link_order=0"};

void sleepFor(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

class Jalv : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    jack_ =
        std::make_unique<ChildProcess>(std::vector<std::string>{"jackd", "-n", serverName, "-r", "-m", "-d",
                                                                "dummy", "-r", "48000", "-p", "256"},
                                       environment);
    sleepFor(1.5);
  }
  static void TearDownTestSuite() {
    jack_->signal(SIGTERM);  // killed, it would stay in the list of servers, which is short
    EXPECT_GE(jack_->wait(10), 0) << jack_->errors();
    jack_.reset();
  }
  void SetUp() override {
    ASSERT_FALSE(XServer::instance().name().empty()) << "no X server: the Debian package xvfb is needed";
    setenv("DISPLAY", XServer::instance().name().c_str(), 1);
    setenv("LV2_PATH", std::filesystem::path(TOVIN_LV2).parent_path().c_str(), 1);
    user_ = std::make_unique<X11User>();
    user_->warpTo(1200, 700);
  }

  void start(const std::string& code, const std::vector<std::string>& options = {}) {
    std::vector<std::string> command{"jalv.gtk3"};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back("urn:tovin:lv2:" + code);
    host_ = std::make_unique<ChildProcess>(command, environment);
    window_ = None;
    for (int i = 0; i < 200 && !window_; ++i) {
      sleepFor(0.05);
      window_ = shownWindow();
    }
    ASSERT_TRUE(window_) << code << ": " << host_->errors();
    sleepFor(0.5);
  }
  Window shownWindow() const {
    Window root, parent, *children = nullptr, found = None;
    unsigned count = 0;
    XQueryTree(user_->x(), user_->root(), &root, &parent, &children, &count);
    for (unsigned i = 0; i < count; ++i) {
      XWindowAttributes a;
      if (XGetWindowAttributes(user_->x(), children[i], &a) && a.map_state == IsViewable && a.width > 200)
        found = children[i];
    }
    XFree(children);
    return found;
  }
  /// Colours in the editor's upper part, which a blank window has one of.
  size_t colours() const {
    XImage* image = XGetImage(user_->x(), user_->root(), 0, menuHeight, 300, 130, AllPlanes, ZPixmap);
    std::set<unsigned long> different;
    for (int y = 0; y < 130; ++y)
      for (int x = 0; x < 300; ++x) different.insert(XGetPixel(image, x, y));
    XDestroyImage(image);
    return different.size();
  }
  int closeWindow() {
    user_->closePolitely(window_);
    XSync(user_->x(), False);
    return host_->wait(10);
  }

  static std::unique_ptr<ChildProcess> jack_;
  std::unique_ptr<X11User> user_;
  std::unique_ptr<ChildProcess> host_;
  Window window_ = None;
};

std::unique_ptr<ChildProcess> Jalv::jack_;

TEST_F(Jalv, ShowsEveryEditorAndLeavesNothingBehind) {
  unsigned resources = 0;
  for (const std::string& code : PluginFolder::shared().codes()) {
    start(code);
    EXPECT_GT(colours(), 100u) << code;
    EXPECT_EQ(closeWindow(), 0) << code << ": " << host_->errors();
    host_.reset();
    EXPECT_EQ(shownWindow(), None) << code;
    if (resources == 0) resources = user_->resources();  // windows, shared memory and all else
  }
  EXPECT_EQ(user_->resources(), resources);
}

TEST_F(Jalv, ItsValuesMoveTheKnobAndTheKnobItsSound) {
  start("sdly", {"-c", "in_to_out_delay=22050"});
  JackProbe probe(serverName);
  ASSERT_TRUE(probe.connectTo("Sample"));
  const int before = probe.framesOfAClick(5);
  EXPECT_GE(before, 22050);
  const auto wedgeReachesHere = [this] {
    const unsigned long colour = user_->colorAt(204, menuHeight + 55);
    return (colour >> 16) > 0xE0 && (colour & 0xFF) < 0x60;
  };
  EXPECT_TRUE(wedgeReachesHere());
  user_->warpTo(210, menuHeight + 66);
  user_->press();
  for (int i = 0; i < 4; ++i) {
    user_->moveBy(0, 10);
    XSync(user_->x(), False);
    sleepFor(0.1);
  }
  user_->release();
  XSync(user_->x(), False);
  sleepFor(0.3);
  EXPECT_FALSE(wedgeReachesHere());
  sleepFor(1);  // turning on
  const int after = probe.framesOfAClick(5);
  EXPECT_GE(after, 0);
  EXPECT_LT(after, before - 1000);
  EXPECT_EQ(closeWindow(), 0);
}

}  // namespace
