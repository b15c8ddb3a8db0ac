// The real window of `tovin open --log` on a real X server, used with synthetic hands.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <thread>

#include "ChildProcess.h"
#include "X11Headers.h"
#include "XServer.h"

namespace {

constexpr int sampleDelayWidth = 420;
constexpr int compressorWidth = 1128;
constexpr int stripHeight = 28;         // of the host's presets, above the editor
constexpr int knobX = 210, knobY = 66;  // centre, from the editor's top left
constexpr int fieldX = 210, fieldY = 100;
constexpr int barX = 60;  // on the overlay's bar, left of its text
constexpr double maximum = 44100;

void sleepFor(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

class OpenEditor : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(XServer::instance().name().empty()) << "no X server: the Debian package xvfb is needed";
    setenv("DISPLAY", XServer::instance().name().c_str(), 1);
    x_ = XOpenDisplay(nullptr);
    ASSERT_TRUE(x_);
  }
  void TearDown() override {
    host_.reset();
    if (x_) XCloseDisplay(x_);
  }

  void open(std::vector<std::string> more = {}, const std::vector<std::string>& environment = {}) {
    openEffect("sdly", sampleDelayWidth, std::move(more), environment);
  }
  void openEffect(const char* effect, int width, std::vector<std::string> more = {},
                  const std::vector<std::string>& environment = {}) {
    width_ = width;
    std::vector<std::string> command{TOVIN_PROGRAM, "open", effect, "--log", "--scale", "1"};
    command.insert(command.end(), more.begin(), more.end());
    host_ = std::make_unique<ChildProcess>(command, environment);
    for (int i = 0; i < 1000 && !findWindow(); ++i) sleepFor(0.01);
    ASSERT_TRUE(findWindow()) << host_->errors();
    sleepFor(0.3);  // until it is drawn and its announcements have gone round
  }

  bool findWindow() {
    Window root, parent, *children = nullptr;
    unsigned count = 0;
    XQueryTree(x_, DefaultRootWindow(x_), &root, &parent, &children, &count);
    bool found = false;
    for (unsigned i = 0; i < count; ++i) {
      XWindowAttributes attributes;
      if (!XGetWindowAttributes(x_, children[i], &attributes) || attributes.width != width_) continue;
      if (attributes.map_state != IsViewable) continue;
      left_ = attributes.x;
      top_ = attributes.y + stripHeight;
      window_ = children[i];
      found = true;
    }
    XFree(children);
    return found;
  }

  /// xdotool with these words; `{k}` stands for the knob's centre, `{f}` for the value field's.
  static void replaceAll(std::string& text, const std::string& what, const std::string& by) {
    for (size_t at; (at = text.find(what)) != std::string::npos;) text.replace(at, what.size(), by);
  }
  void hands(std::string words) {
    const auto place = [&](int dx, int dy) {
      return std::to_string(left_ + dx) + " " + std::to_string(top_ + dy);
    };
    replaceAll(words, "{k}", place(knobX, knobY));
    replaceAll(words, "{f}", place(fieldX, fieldY));
    ASSERT_EQ(std::system(("xdotool " + words).c_str()), 0) << words << " (Debian package xdotool)";
  }
  /// Presses on the knob, moves up by 30 points within that time, lets go and waits until it has coasted.
  void drag(double seconds) {
    hands("mousemove {k} mousedown 1");
    for (int i = 0; i < 10; ++i) {
      hands("mousemove_relative -- 0 -3");
      sleepFor(seconds / 10);
    }
    sleepFor(0.4);
    hands("mouseup 1");
    sleepFor(0.2);
  }

  /// Identifier and value of the last change that was printed.
  std::pair<int, double> lastChange() {
    const std::string& text = host_->output();
    const size_t line = text.rfind("\n", text.size() - 2);
    const std::string last = text.substr(line == std::string::npos ? 0 : line + 1);
    std::istringstream words(last);
    std::pair<int, double> change{-1, -1};
    words >> change.first >> change.second;
    return change;
  }
  /// The value of a parameter that was printed last.
  double printed(int id) {
    std::istringstream lines(host_->output());
    double last = -1, v;
    for (int each; lines >> each >> v;)
      if (each == id) last = v;
    return last;
  }
  double value() { return lastChange().first == 0 ? lastChange().second : -1; }
  void automate(double to) {
    host_->write("0 " + std::to_string(static_cast<long>(to)) + "\n");
    ASSERT_TRUE(host_->waitForOutput("0 " + std::to_string(static_cast<long>(to)) + "\n", 2));
  }

  unsigned long colorAt(int dx, int dy) {
    XImage* pixel = XGetImage(x_, DefaultRootWindow(x_), left_ + dx, top_ + dy, 1, 1, AllPlanes, ZPixmap);
    const unsigned long color = XGetPixel(pixel, 0, 0) & 0xffffff;
    XDestroyImage(pixel);
    return color;
  }
  static bool isOrange(unsigned long c) { return (c >> 16) > 0xd0 && (c & 255) < 0x60; }
  std::string pointer() {
    Window root, child;
    int x, y, wx, wy;
    unsigned mask;
    XQueryPointer(x_, DefaultRootWindow(x_), &root, &child, &x, &y, &wx, &wy, &mask);
    return std::to_string(x - left_) + "," + std::to_string(y - top_);
  }

  XConnection* x_ = nullptr;
  Window window_ = 0;
  int width_ = 0;
  int left_ = 0, top_ = 0;
  std::unique_ptr<ChildProcess> host_;
};

TEST_F(OpenEditor, DragTurnsTheKnobAndGivesThePointerBack) {
  open();
  EXPECT_FALSE(isOrange(colorAt(knobX - 12, knobY)));
  const unsigned long before = colorAt(barX, knobY);
  hands("mousemove {k} mousedown 1");
  for (int i = 0; i < 12; ++i) {
    hands("mousemove_relative -- 0 -12");  // beyond the upper edge of the screen
    sleepFor(0.05);
  }
  hands("mousemove_relative -- 0 -500");
  sleepFor(0.3);
  EXPECT_NE(colorAt(barX, knobY), before) << "the overlay's bar covers the background";
  EXPECT_TRUE(isOrange(colorAt(knobX - 12, knobY)));
  hands("mouseup 1");
  sleepFor(0.3);
  EXPECT_EQ(colorAt(barX, knobY), before);
  EXPECT_EQ(pointer(), std::to_string(knobX) + "," + std::to_string(knobY));
  EXPECT_EQ(value(), maximum);
}

TEST_F(OpenEditor, SpeedAndModifiersWeighTheMotion) {
  open();
  drag(0.1);
  const double fast = value();
  automate(0);
  drag(2);
  const double slow = value();
  EXPECT_GE(fast, 1.8 * slow);
  EXPECT_GT(slow, 0);

  automate(0);
  hands("keydown shift");
  drag(0.1);
  hands("keyup shift");
  EXPECT_LT(value(), fast / 10);

  automate(30000);
  hands("mousemove {k} keydown alt click 1 keyup alt");
  EXPECT_TRUE(host_->waitForOutput("0 0\n", 2)) << "Option returns to the default";
}

TEST_F(OpenEditor, TypedValuesAreWrittenAndPinned) {
  for (const char* locale : {"LC_ALL=C", "LC_ALL=de_DE.UTF-8"}) {
    open({}, {locale});
    hands("mousemove {f} click 1 type --delay 20 441");
    hands("key Return");
    EXPECT_TRUE(host_->waitForOutput("0 441\n", 2)) << locale << host_->output();
    hands("mousemove {f} click 1 type --delay 20 12.75x");
    hands("key Return");
    EXPECT_TRUE(host_->waitForOutput("0 13\n", 2)) << locale << host_->output();
    hands("mousemove {f} click 1 type --delay 20 99999999");
    hands("key Return");
    EXPECT_TRUE(host_->waitForOutput("0 44100\n", 2)) << locale << host_->output();
    host_.reset();
    sleepFor(0.1);
  }
}

TEST_F(OpenEditor, AutomationTurnsTheKnobAndBadLinesAreReported) {
  open();
  host_->write("0 44100\n");
  sleepFor(0.1);
  EXPECT_TRUE(isOrange(colorAt(knobX + 12, knobY)));
  host_->write("nonsense\n7 1\n0 1 2\n0 1000\n");
  EXPECT_TRUE(host_->waitForOutput("0 1000\n", 2));
  EXPECT_EQ(host_->errors(),
            "tovin: standard input, line 2: \"nonsense\", expected ID VALUE\n"
            "tovin: standard input, line 3: \"7 1\", expected the identifier of a parameter that can be set\n"
            "tovin: standard input, line 4: \"0 1 2\", expected ID VALUE\n");
  host_->closeInput();
  EXPECT_EQ(host_->wait(0.3), -1) << "the end of standard input ends nothing";
}

TEST_F(OpenEditor, CrossoverHandlesWriteTheirFrequencyAndKeepThePointer) {
  openEffect("mcmp", compressorWidth);
  constexpr int y = 75;
  constexpr double plotLeft = 136, plotWidth = 960, octaves = 10.1066;  // 20 to 22050 Hz
  const auto frequency = [](double x) { return 20 * std::exp2((x - plotLeft) / plotWidth * octaves); };
  const auto at = [](double hertz) {
    return static_cast<int>(plotLeft + std::log2(hertz / 20) / octaves * plotWidth);
  };
  const struct {
    int parameter;
    double from;
    int motion;
    bool fine;
  } rows[] = {
      {2, 120, 60, false}, {3, 700, 100, true}, {4, 3000, -80, false}, {3, 735, 616 - at(735), false}};
  for (const auto& row : rows) {
    const int x = at(row.from);
    hands("mousemove " + std::to_string(left_ + x) + " " + std::to_string(top_ + y) + " mousedown 1");
    if (row.fine) hands("keydown shift");
    for (int i = 0; i < 4; ++i)
      hands("mousemove_relative -- " + std::to_string(row.motion * (i + 1) / 4 - row.motion * i / 4) + " 0");
    if (row.fine) hands("keyup shift");
    sleepFor(0.2);
    hands("mouseup 1");
    sleepFor(0.2);
    const double to = x + row.motion * (row.fine ? 0.1 : 1);
    const auto [id, hertz] = lastChange();
    EXPECT_EQ(id, row.parameter);
    EXPECT_NEAR(hertz, frequency(to + 0.5), hertz * 0.004) << row.parameter;
    EXPECT_EQ(pointer(), std::to_string(static_cast<int>(to + 0.5)) + "," + std::to_string(y));
  }
  EXPECT_NEAR(lastChange().second, std::sqrt(20 * 22050.0), 3) << "the middle of the axis";
}

TEST_F(OpenEditor, TheDelayFollowsTempoRhythmAndPresets) {
  openEffect("dely", 536);
  const auto go = [this](int x, int y, const std::string& then) {
    hands("mousemove " + std::to_string(left_ + x) + " " + std::to_string(top_ + y) + " " + then);
  };
  go(160, 227, "click 1");
  sleepFor(0.2);
  hands("key Home");
  for (int i = 0; i < 8; ++i) hands("key Down");
  hands("key Return");
  EXPECT_TRUE(host_->waitForOutput("1 0.25\n", 2)) << host_->output();

  const auto tick = [this] { return colorAt(32 + 472 * 4 / 7, 318 - 150 - 76 - 3); };  // beat 4 at 140
  const unsigned long before = tick();
  host_->write("tempo 140\ntempo fast\n");
  sleepFor(0.7);
  EXPECT_NE(tick(), before);
  EXPECT_EQ(host_->errors(),
            "tovin: standard input, line 2: \"tempo fast\", expected tempo BPM, from 1 to 999\n");

  const double first = printed(1);
  go(32 + 39, 318 - 150 - 76 - 31, "mousedown 1 mousemove_relative -- 100 -10");
  sleepFor(0.2);
  hands("mouseup 1");
  sleepFor(0.2);
  EXPECT_NEAR(printed(1), first + 100 * 3 / 472.0, 0.02);
  EXPECT_NEAR(printed(2), 50 + 10 / (68 * 0.9) * 100, 3);

  go(90, -14, "click 1");
  sleepFor(0.2);
  hands("key End key Return");
  sleepFor(0.3);
  EXPECT_GT(std::abs(printed(1) - first - 100 * 3 / 472.0), 0.02) << "the last preset";
}

TEST_F(OpenEditor, AnIntervalBecomesSemitonesAndCents) {
  openEffect("tmpt", 632);
  const auto go = [this](int x, int y, const std::string& then) {
    hands("mousemove " + std::to_string(left_ + x) + " " + std::to_string(top_ + y) + " " + then);
  };
  go(257, 67, "click 1");
  sleepFor(0.2);
  hands("key Home");
  for (int i = 0; i < 5; ++i) hands("key Down");  // 2/1, 15/8, 9/5, 5/3, 8/5, 3/2
  hands("key Return");
  sleepFor(0.2);
  EXPECT_NEAR(printed(1), 701.955, 1e-4);
  go(72, 66, "click 4");  // a semitone more; the cents stay
  sleepFor(0.2);
  EXPECT_NEAR(printed(1), 801.955, 1e-4);
  host_->write("1 -250\n");
  sleepFor(0.2);
  go(72, 66, "click 4");  // from -3 and 50, at which the knob of cents stands at its end
  sleepFor(0.2);
  EXPECT_NEAR(printed(1), -150.001, 1e-4);
}

TEST_F(OpenEditor, EndsCleanlyAlsoInTheMiddleOfADrag) {
  const auto politely = [this] {
    XEvent event{};
    event.xclient = {.type = ClientMessage,
                     .serial = 0,
                     .send_event = True,
                     .display = x_,
                     .window = window_,
                     .message_type = XInternAtom(x_, "WM_PROTOCOLS", False),
                     .format = 32,
                     .data = {}};
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(x_, "WM_DELETE_WINDOW", False));
    XSendEvent(x_, window_, False, NoEventMask, &event);
    XFlush(x_);
  };
  const std::vector<std::pair<const char*, std::function<void()>>> ways{
      {"SIGINT", [this] { host_->signal(SIGINT); }},
      {"SIGTERM", [this] { host_->signal(SIGTERM); }},
      {"closed by the user", politely},
  };
  for (const auto& [name, end] : ways) {
    open();
    hands("mousemove {k} mousedown 1 mousemove_relative -- 0 -20");
    sleepFor(0.1);
    end();
    EXPECT_EQ(host_->wait(5), 0) << name << host_->errors();
    EXPECT_EQ(host_->errors(), "") << name;
    hands("mouseup 1");
  }
  open({"--seconds", "1"});
  EXPECT_EQ(host_->wait(10), 0) << host_->errors();
}

}  // namespace
