// The plug-ins' editors in a host that knows nothing of them: X windows, ports, and many ways to end.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#if defined(__SANITIZE_ADDRESS__)
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "HostedEditor.h"
#include "LoadedPlugin.h"
#include "X11User.h"

namespace {

using Log = HostedEditor::Log;

constexpr int corner = 50;  // of the host's window

/// Of the process: what is allocated, where the sanitizer keeps freed memory for a while; else what is
/// resident.
size_t bytesInUse() {
#if defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes();
#else
  size_t total = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
#endif
}

size_t entriesIn(const char* folder) {
  const std::filesystem::directory_iterator all(folder);
  return static_cast<size_t>(std::distance(begin(all), end(all)));
}

class PluginEditors : public testing::Test {
 protected:
  void open(const std::string& code, float scale = 1) {
    editor = std::make_unique<HostedEditor>(object, code, parent, scale);
    ASSERT_TRUE(editor->isOpen()) << code;
    idle(0.1);
  }
  /// Lets all that was done arrive.
  bool idle(double seconds) {
    user.sync();
    return editor->idle(seconds);
  }
  void pointAt(int x, int y) {
    user.warpTo(corner + x, corner + y);
    idle(0.05);
  }
  void press(int x, int y) {
    pointAt(x, y);
    user.press();
    idle(0.05);
  }
  void drag(int dx, int dy) {
    for (int i = 0; i < 4; ++i) {
      user.moveBy(dx / 4, dy / 4);
      idle(0.04);
    }
  }
  void release() {
    user.release();
    idle(0.1);
  }
  void type(KeySym key) {
    user.type(key);
    idle(0.1);
  }
  unsigned long colorAt(int x, int y) const { return user.colorAt(corner + x, corner + y); }

  EditorObject object;
  X11User user;
  Window parent = user.makeWindow(corner, corner, 1128, 522);
  std::unique_ptr<HostedEditor> editor;
};

TEST_F(PluginEditors, WhatTheUserDoesIsTouchedWrittenAndLetGo) {
  open("sdly");
  EXPECT_EQ(editor->width(), 420);
  pointAt(210, 66);
  EXPECT_EQ(editor->takeLog(), Log{}) << "opening writes nothing";
  press(210, 66);
  EXPECT_EQ(editor->takeLog(), Log{});
  drag(0, -40);
  idle(1.2);  // until the knob stands still
  const float held = editor->written("in_to_out_delay");
  EXPECT_GT(held, 0);
  editor->set("in_to_out_delay", 1);  // an old echo
  idle(0.2);
  EXPECT_EQ(editor->takeLog(), (Log{"+in_to_out_delay", "in_to_out_delay"}));
  drag(0, -40);
  EXPECT_GT(editor->written("in_to_out_delay"), 1.5f * held) << "from where it was";
  release();
  EXPECT_EQ(editor->takeLog(), (Log{"in_to_out_delay", "-in_to_out_delay"}));

  const Log once{"+in_to_out_delay", "in_to_out_delay", "-in_to_out_delay"};
  user.click(5);
  idle(0.1);
  EXPECT_EQ(editor->takeLog(), once) << "a step of the wheel";
  press(210, 100);
  release();
  for (const KeySym key : {XK_4, XK_4, XK_1}) type(key);
  EXPECT_EQ(editor->takeLog(), Log{});
  type(XK_Return);
  EXPECT_EQ(editor->takeLog(), once) << "a typed value";
  EXPECT_EQ(editor->written("in_to_out_delay"), 441);
}

TEST_F(PluginEditors, AHandleTouchesBothPortsAndAMenuOne) {
  open("dely");
  press(32 + 157, 318 - 150 - 76 - 31);
  drag(40, -8);
  release();
  Log log = editor->takeLog();
  std::erase_if(log, [](const std::string& entry) { return entry[0] != '+' && entry[0] != '-'; });
  std::sort(log.begin(), log.end());
  EXPECT_EQ(log, (Log{"+delay_time", "+feedback", "-delay_time", "-feedback"}));

  editor->set("tempo", 0);  // none yet
  editor->set("tempo", 140);
  idle(0.6);
  press(160, 227);
  release();
  for (const KeySym key : {XK_Home, XK_Down, XK_Return}) type(key);
  EXPECT_EQ(editor->takeLog(), (Log{"+delay_time", "delay_time", "-delay_time"}));
  EXPECT_NEAR(editor->written("delay_time"), 60 / 140.0f * 4 * 1.5f / 2, 1e-3f) << "1/2.";

  open("tmpt");
  press(257, 67);
  release();
  for (const KeySym key : {XK_Home, XK_Down, XK_Down, XK_Down, XK_Down, XK_Down, XK_Return}) type(key);
  EXPECT_EQ(editor->takeLog(), (Log{"+pitch", "pitch", "-pitch"}));
  EXPECT_NEAR(editor->written("pitch"), 701.955f, 1e-3f);
  press(140, 143);
  release();
  for (const KeySym key : {XK_End, XK_Return}) type(key);
  EXPECT_EQ(editor->takeLog(), (Log{"+render_quality", "render_quality", "-render_quality"}));
}

TEST_F(PluginEditors, FollowTheHostAndSayNothing) {
  open("lpas");
  const unsigned long before = colorAt(300, 190);
  editor->set("cutoff_frequency", 100);
  editor->set("resonance", NAN);
  idle(0.2);
  EXPECT_NE(colorAt(300, 190), before) << "the curve fell";

  open("mcmp");
  const unsigned long still = colorAt(340, 395);
  editor->set("compression_amount_1", 12);
  idle(0.5);
  EXPECT_NE(colorAt(355, 395), still) << "the meter moved";

  open("mrev", 2);
  EXPECT_EQ(editor->width(), 1616);
  editor->set("render_quality", 0);
  XMoveWindow(user.x(), parent, 70, 20);
  idle(0.2);
  EXPECT_EQ(editor->takeLog(), Log{});
}

TEST_F(PluginEditors, KeysBelongToTheHostUnlessTextIsEdited) {
  open("sdly");
  XSelectInput(user.x(), parent, KeyPressMask);
  XSetInputFocus(user.x(), parent, RevertToParent, CurrentTime);
  const auto hostGetsSpace = [this] {
    type(XK_space);
    XEvent event;
    return XCheckTypedEvent(user.x(), KeyPress, &event) != 0;
  };
  press(210, 66);
  release();
  EXPECT_TRUE(hostGetsSpace());
  press(210, 100);
  release();
  EXPECT_FALSE(hostGetsSpace());
  type(XK_Escape);
  EXPECT_TRUE(hostGetsSpace());
}

TEST_F(PluginEditors, EndInAnyOrder) {
  const auto codes = PluginFolder::shared().codes();
  std::vector<std::unique_ptr<HostedEditor>> open;
  for (int twice = 0; twice < 2; ++twice)
    for (const std::string& code : codes) {
      const Window window = user.makeWindow(corner, corner, 1128, 522);
      open.push_back(std::make_unique<HostedEditor>(object, code, window, twice == 0 ? 1.0f : 1.5f));
      ASSERT_TRUE(open.back()->isOpen()) << code;
    }
  EXPECT_EQ(open.size(), 30u);
  for (const auto& one : open) one->idle(0);
  open.back()->set("pitch", 100);
  open.back()->idle(0.1);
  EXPECT_EQ(open.back()->takeLog(), Log{});
  std::mt19937 random(7);
  std::shuffle(open.begin(), open.end(), random);
  while (!open.empty()) {
    open.pop_back();
    for (const auto& one : open) EXPECT_TRUE(one->idle(0));
  }
}

TEST_F(PluginEditors, EndInTheMiddleOfADragAndAfterTheirWindow) {
  open("sdly");
  press(210, 66);
  drag(0, -20);
  editor->close();
  EXPECT_EQ(editor->takeLog(), (Log{"+in_to_out_delay", "in_to_out_delay", "-in_to_out_delay"}));
  user.release();

  for (const bool inADrag : {false, true}) {
    parent = user.makeWindow(corner, corner, 420, 158);
    open("sdly");
    if (inADrag) {
      press(210, 66);
      drag(0, -20);
    }
    XDestroyWindow(user.x(), parent);
    user.sync();
    EXPECT_FALSE(idle(0.1)) << "the editor says that it is gone";
    editor->set("in_to_out_delay", 5);
    editor->close();
    const Log log = editor->takeLog();
    EXPECT_EQ(std::count(log.begin(), log.end(), "+in_to_out_delay"),
              std::count(log.begin(), log.end(), "-in_to_out_delay"));
    user.release();
  }
  parent = user.makeWindow(corner, corner, 420, 158);
  open("sdly");
  XDestroyWindow(user.x(), parent);
  user.sync();  // and no idle any more
}

TEST_F(PluginEditors, AreLoadedAndUnloadedFiftyTimes) {
  object.unload();
  for (int i = 0; i < 50; ++i) {
    const EditorObject again;
    HostedEditor one(again, i % 2 ? "lpas" : "mrev", parent);
    ASSERT_TRUE(one.isOpen());
    one.idle(0);
  }
  EXPECT_FALSE(EditorObject::isInMemory());
}

struct Knob {
  const char* code;
  int x, y;  // its centre
};

class EditorCycles : public PluginEditors, public testing::WithParamInterface<Knob> {};

TEST_P(EditorCycles, TwoHundredLeaveNothingBehind) {
  size_t bytes = 0, descriptors = 0, threads = 0;
  unsigned resources = 0;
  for (int i = 0; i < 200; ++i) {
    editor = std::make_unique<HostedEditor>(object, GetParam().code, parent);
    user.warpTo(corner + GetParam().x, corner + GetParam().y);
    user.press();
    idle(0);
    user.moveBy(0, i % 4 < 2 ? -5 : 5);
    idle(0);
    user.release();
    if (i % 2) idle(0);  // else it closes in the middle of the gesture
    editor->close();
    if (i != 19) continue;
    bytes = bytesInUse();
    descriptors = entriesIn("/proc/self/fd");
    threads = entriesIn("/proc/self/task");
    resources = user.resources();
  }
  EXPECT_LT(bytesInUse(), bytes + (2 << 20));
  EXPECT_EQ(entriesIn("/proc/self/fd"), descriptors);
  EXPECT_EQ(entriesIn("/proc/self/task"), threads);
  EXPECT_EQ(user.resources(), resources);
}

INSTANTIATE_TEST_SUITE_P(All, EditorCycles,
                         testing::Values(Knob{"mcmp", 72, 66}, Knob{"dcmp", 284, 66}, Knob{"lmtr", 72, 198},
                                         Knob{"filt", 70, 142}, Knob{"lpas", 480, 74}, Knob{"bpas", 480, 74},
                                         Knob{"pmeq", 480, 66}, Knob{"mrev", 260, 194}, Knob{"dely", 72, 226},
                                         Knob{"sdly", 210, 66}, Knob{"tmpt", 72, 66}),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
