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

TEST(PluginEditors, FollowMetersAndSayNothing) {
  PluginHands hands("mcmp");
  const std::string meter = "amountView1+54,-33";
  const unsigned long before = hands.colorAt(meter);
  EXPECT_EQ(hands.play("set 1000 12; set 0 nan; wait 0.4"), "");
  EXPECT_NE(hands.colorAt(meter), before);
}

TEST(PluginEditors, AreAsLargeAsTheHostsScaleAndMayBeMoved) {
  PluginHands hands("mrev", 2);
  EXPECT_EQ(hands.editor->width(), 1616);
  XMoveWindow(hands.user.x(), hands.parent, 70, 20);
  EXPECT_EQ(hands.play("wait 0.1"), "");
}

TEST(PluginEditors, ShareTheRenderQualityAndTheTempoWithTheHost) {
  PluginHands time("tmpt");
  time.editor->set(PluginPort::renderQuality, 0);
  EXPECT_EQ(time.play("wait 0.1; click renderQ; type <home><return>"),
            "begin render_quality, render_quality = 127, end render_quality");
  PluginHands delay("dely");
  for (const float tempo : {0.0f, 140.0f})
    delay.editor->set(PluginPort::tempo, tempo);  // none yet, and then one
  EXPECT_EQ(delay.play("wait 0.6; click rhythmPopup; type <home><down><return>"),
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
  const XErrorHandler handler = XSetErrorHandler(nullptr);
  std::vector<std::unique_ptr<HostedEditor>> open;
  for (const float scale : {1.0f, 1.5f})
    for (const Component component : registeredEffects())
      open.push_back(
          std::make_unique<HostedEditor>(effectCode(component), user.makeWindow(50, 50, 1128, 522), scale));
  for (const auto& one : open) one->idle(0);
  std::shuffle(open.begin(), open.end(), std::mt19937(7));
  for (; !open.empty(); open.pop_back())
    for (const auto& one : open) {
      EXPECT_TRUE(one->idle(0));
      EXPECT_EQ(joined(one->takeLog()), "") << "opening writes nothing";
    }
  EXPECT_FALSE(HostedEditor::isLoaded());
  EXPECT_EQ(XSetErrorHandler(handler), handler) << "the host's own";
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
    EXPECT_EQ(joined(hands.heard()), "end 0");
    hands.user.release();
  }
  hands.reopen();
  XDestroyWindow(hands.user.x(), hands.parent);
  hands.user.sync();  // and no idle any more
}

long heap() {
#if defined(__SANITIZE_ADDRESS__)
  return static_cast<long>(__sanitizer_get_current_allocated_bytes());
#else
  return static_cast<long>(mallinfo2().uordblks + mallinfo2().hblkhd);
#endif
}

long entriesIn(const char* folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

class EditorCycles : public testing::TestWithParam<const char*> {};

TEST_P(EditorCycles, LeaveNothingBehind) {
  PluginHands hands(GetParam());
  const NSPoint place = hands.anyKnob();
  const auto repeat = [&](int count) {
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
  };
  repeat(10);
  const long descriptors = entriesIn("/proc/self/fd"), threads = entriesIn("/proc/self/task");
  long growth = LONG_MAX;  // of the steadiest five: the heap's own habits come and go
  for (int i = 0; i < 6; ++i) {
    const long bytes = heap();
    repeat(5);
    growth = std::min(growth, heap() - bytes);
  }
  EXPECT_EQ(entriesIn("/proc/self/fd"), descriptors);
  EXPECT_EQ(entriesIn("/proc/self/task"), threads);
  EXPECT_LT(growth, 5 * 120);
}

INSTANTIATE_TEST_SUITE_P(Some, EditorCycles, testing::Values("mcmp", "filt", "mrev", "dely", "tmpt"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
