// The plug-ins' editors in a host that knows nothing of them: X windows, ports, and many ways to end.

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <random>

#if defined(__SANITIZE_ADDRESS__)
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "EffectInstance.h"
#include "Gestures.h"
#include "PluginHands.h"

namespace {

const std::string knob = "inToOutDelay.knob";

std::string all(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "; ";
  return text;
}

TEST(Gestures, DoTheSameInAPlugin) {
  for (const Gesture& gesture : gestures) {
    PluginHands hands(gesture.effect);
    EXPECT_EQ(hands.play(gesture.script), gesture.heard) << gesture.name;
  }
}

TEST(PluginEditors, APortThatIsHeldTakesNothingFromTheHost) {
  PluginHands hands("sdly");
  const std::string wedge = knob + "+12,0";
  const unsigned long atStart = hands.colorAt(wedge);
  EXPECT_EQ(hands.play("press " + knob + "; drag 0 9; drag 0 9000; wait 0.3"), "begin 0, 0 = 44100");
  const unsigned long atEnd = hands.colorAt(wedge);
  EXPECT_NE(atEnd, atStart);
  EXPECT_EQ(hands.play("set 0 0; wait 0.1"), "") << "an old echo";
  EXPECT_EQ(hands.colorAt(wedge), atEnd);
  EXPECT_EQ(hands.play("release; set 0 0; wait 0.1"), "end 0");
  EXPECT_EQ(hands.colorAt(wedge), atStart);
}

TEST(PluginEditors, FollowTheHostAndSayNothing) {
  const struct {
    const char* effect;
    const char* script;
    const char* place;  // that looks different afterwards
  } rows[] = {{"lpas", "set 0 100; set 1 nan; wait 0.1", "graphView+86,-76"},
              {"mcmp", "set 1000 12; wait 0.4", "amountView1+54,-33"}};
  for (const auto& row : rows) {
    PluginHands hands(row.effect);
    const unsigned long before = hands.colorAt(row.place);
    EXPECT_EQ(hands.play(row.script), "") << row.effect;
    EXPECT_NE(hands.colorAt(row.place), before) << row.effect;
  }
}

TEST(PluginEditors, AreAsLargeAsTheHostsScaleAndMayBeMoved) {
  PluginHands hands("mrev", 2);
  EXPECT_EQ(hands.editor->width(), 1616);
  XMoveWindow(hands.user.x(), hands.parent, 70, 20);
  EXPECT_EQ(hands.play("wait 0.1"), "");
}

TEST(PluginEditors, TellOfTheRenderQualityBothWays) {
  PluginHands hands("tmpt");
  hands.editor->set(PluginPort::renderQuality, 0);
  EXPECT_EQ(hands.play("wait 0.1; click renderQ; type <home><return>"),
            "begin render_quality, render_quality = 127, end render_quality");
}

TEST(PluginEditors, ChooseRhythmsByTheHostsTempo) {
  PluginHands hands("dely");
  for (const float tempo : {0.0f, 140.0f})
    hands.editor->set(PluginPort::tempo, tempo);  // none yet, and then one
  EXPECT_EQ(hands.play("wait 0.6; click rhythmPopup; type <home><down><return>"),
            "begin 1, 1 = 1.2857, end 1")
      << "1/2.";
}

TEST(PluginEditors, KeysBelongToTheHostUnlessTextIsEdited) {
  PluginHands hands("sdly");
  XSetInputFocus(hands.user.x(), hands.parent, RevertToParent, CurrentTime);
  const auto hostGetsA = [&] {
    hands.play("type a");
    XEvent event;
    return XCheckTypedEvent(hands.user.x(), KeyPress, &event) != 0;
  };
  hands.play("click " + knob);
  EXPECT_TRUE(hostGetsA());
  hands.play("click inToOutDelay.field");
  EXPECT_FALSE(hostGetsA());
  hands.play("type <escape>");
  EXPECT_TRUE(hostGetsA());
}

TEST(PluginEditors, EndInAnyOrder) {
  X11User user;
  const EditorObject object;
  std::vector<std::unique_ptr<HostedEditor>> open;
  for (const float scale : {1.0f, 1.5f})
    for (const Component component : registeredEffects())
      open.push_back(std::make_unique<HostedEditor>(object, effectCode(component),
                                                    user.makeWindow(50, 50, 1128, 522), scale));
  for (const auto& one : open) one->idle(0);
  std::shuffle(open.begin(), open.end(), std::mt19937(7));
  for (; !open.empty(); open.pop_back())
    for (const auto& one : open) {
      EXPECT_TRUE(one->idle(0));
      EXPECT_EQ(all(one->takeLog()), "") << "opening writes nothing";
    }
}

TEST(PluginEditors, EndInTheMiddleOfADragAndAfterTheirWindow) {
  PluginHands hands("sdly");
  for (const bool windowGoes : {false, true}) {
    hands.reopen();
    EXPECT_EQ(hands.play("press " + knob + "; drag 0 9; drag 0 9000; wait 0.3"), "begin 0, 0 = 44100");
    if (windowGoes) {
      XDestroyWindow(hands.user.x(), hands.parent);
      hands.user.sync();
      EXPECT_FALSE(hands.editor->idle(0.1)) << "the editor says that it is gone";
      hands.set(0, 5);
    }
    hands.editor->close();
    EXPECT_EQ(all(hands.heard()), "end 0; ");
    hands.user.release();
  }
  hands.reopen();
  XDestroyWindow(hands.user.x(), hands.parent);
  hands.user.sync();  // and no idle any more
}

TEST(PluginEditors, AreLoadedAndUnloadedTwentyTimes) {
  X11User user;
  const Window parent = user.makeWindow(50, 50, 1128, 522);
  for (int i = 0; i < 20; ++i) {
    const EditorObject object;
    HostedEditor(object, i % 2 ? "lpas" : "mrev", parent).idle(0);
  }
  EXPECT_FALSE(EditorObject::isInMemory());
}

/// What this process has: bytes of the heap, and what has to be exactly as before.
struct Belongings {
  explicit Belongings(const X11User& user)
      : descriptors(entriesIn("/proc/self/fd")),
        threads(entriesIn("/proc/self/task")),
        resources(user.resources()) {}

  static long entriesIn(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
  }
  static long heap() {
#if defined(__SANITIZE_ADDRESS__)
    return static_cast<long>(__sanitizer_get_current_allocated_bytes());
#else
    return static_cast<long>(mallinfo2().uordblks + mallinfo2().hblkhd);
#endif
  }

  long bytes = heap();
  long descriptors, threads;
  unsigned resources;
};

class EditorCycles : public testing::TestWithParam<const char*> {};

TEST_P(EditorCycles, LeaveNothingBehind) {
  PluginHands hands(GetParam());
  const NSPoint place = hands.anyKnob();
  const auto cycles = [&](int count) {
    for (int i = 0; i < count; ++i) {
      hands.reopen();
      hands.press(place);
      hands.moveBy(0, i % 4 < 2 ? 5 : -5);
      hands.user.release();
      if (i % 2) hands.advance(0);  // else it closes in the middle of the gesture
      hands.editor->close();
      XDestroyWindow(hands.user.x(), hands.parent);
      XSync(hands.user.x(), True);  // and the events that wait for the user are forgotten
    }
    return Belongings(hands.user);
  };
  Belongings before = cycles(10);
  long growth = LONG_MAX;  // of the steadiest five: the heap's own habits come and go
  for (int i = 0; i < 6; ++i) {
    const Belongings after = cycles(5);
    growth = std::min(growth, after.bytes - before.bytes);
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.resources, before.resources);
    before = after;
  }
  EXPECT_LT(growth, 5 * 120);
}

INSTANTIATE_TEST_SUITE_P(All, EditorCycles,
                         testing::Values("mcmp", "dcmp", "lmtr", "filt", "lpas", "bpas", "pmeq", "mrev",
                                         "dely", "sdly", "tmpt"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
