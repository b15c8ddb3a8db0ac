// An editor that was opened and closed leaves nothing behind: memory, descriptors, windows, timers.

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>

#if defined(__SANITIZE_ADDRESS__)
// Of the sanitizer's run-time library; the compiler's package brings no header for it.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "AUCocoaUIBase.h"
#include "AUEventListener.h"
#include "AppKitClasses.h"
#include "NSBundle.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "RegisterEffects.h"
#include "X11Display.h"
#include "X11Headers.h"
#include "XServer.h"

namespace {

size_t liveBytes() {
#if defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes();
#else
  return mallinfo2().uordblks;
#endif
}

size_t openDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<size_t>(std::distance(begin(all), end(all)));
}

unsigned windowsOn(XConnection* x) {
  Window root, parent, *children = nullptr;
  unsigned count = 0;
  XQueryTree(x, DefaultRootWindow(x), &root, &parent, &children, &count);
  XFree(children);
  return count;
}

NSView* firstKnob(NSView& inside) {
  for (const auto& view : inside.subviews()) {
    if (view->isa().name() == "jxAURotaryKnob") return view.get();
    if (NSView* knob = firstKnob(*view)) return knob;
  }
  return nullptr;
}

ComponentInstance opened(Component component) {
  ComponentInstance unit = nullptr;
  EXPECT_EQ(OpenAComponent(component, &unit), noErr);
  return unit;
}

/// The bundle on an X server, asked for editors as a host asks.
class EditorsOnX11 : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(XServer::instance().name().empty()) << "no X server: the Debian package xvfb is needed";
    setenv("DISPLAY", XServer::instance().name().c_str(), 1);
    x_ = XOpenDisplay(nullptr);
    NSRegisterAppKitClasses();
    RegisterEffects();
    std::string error;
    bundle_ = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
    ASSERT_TRUE(bundle_ && bundle_->load(error)) << error;
    factory_ = bundle_->principalClass()->make();
    display_ = X11Display::create(error, 1);
    ASSERT_TRUE(display_) << error;
  }
  void TearDown() override {
    if (x_) XCloseDisplay(x_);
  }

  std::shared_ptr<NSWindow> openEditor(AudioUnit unit) {
    const auto view = dynamic_cast<AUCocoaUIBase&>(*factory_).uiViewForAudioUnit_withSize(unit, {0, 0});
    auto window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                             NSBackingStoreBuffered, false);
    window->setContentView(view);
    window->makeKeyAndOrderFront();
    runFor(0.005);
    return window;
  }
  /// The editor in a window, drawn, a knob pressed (which shows the overlay) and turned, all closed again.
  void openUseAndClose(AudioUnit unit) {
    const auto window = openEditor(unit);
    NSView& knob = *firstKnob(*window->contentView());
    NSEvent event;
    event.locationInWindow = knob.convertPoint_toView({20, 20}, nullptr);
    knob.mouseDown(event);
    event.deltaY = -20;
    knob.mouseDragged(event);
    runFor(0.055);
    knob.mouseUp(event);
    window->close();
    XSync(x_, False);
    NSRunLoop::currentRunLoop().runTurn();
  }
  static void runFor(double seconds) {
    NSRunLoop::currentRunLoop().run(NSDate::timeIntervalSinceReferenceDate() + seconds);
  }
  /// A pressed knob's end-stop timer, which holds the knob, runs for 1.5 seconds more.
  static void letTimersEnd() { runFor(1.6); }

  XConnection* x_ = nullptr;
  std::shared_ptr<NSBundle> bundle_;
  std::shared_ptr<NSObject> factory_;
  std::shared_ptr<X11Display> display_;
};

class Lifecycle : public EditorsOnX11, public testing::WithParamInterface<OSType> {};

TEST_P(Lifecycle, TwoHundredEditorsLeaveNothingBehind) {
  const ComponentDescription wanted{.componentType = FourCharCode("aufx"), .componentSubType = GetParam()};
  const ComponentInstance unit = opened(FindNextComponent(nullptr, &wanted));
  size_t bytes = 0, descriptors = 0;
  unsigned windows = 0;
  for (int i = 0; i < 200; ++i) {
    openUseAndClose(unit);
    if (i == 9) {
      letTimersEnd();
      bytes = liveBytes();
      descriptors = openDescriptors();
      windows = windowsOn(x_);
    }
  }
  letTimersEnd();
  EXPECT_LT(liveBytes(), bytes + 256 * 1024);
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_EQ(windowsOn(x_), windows);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
  CloseComponent(unit);
}

TEST_F(EditorsOnX11, AllEditorsAtOnceUnderAStormOfChanges) {
  const ComponentDescription all{.componentType = FourCharCode("aufx")};
  std::vector<std::pair<ComponentInstance, std::shared_ptr<NSWindow>>> editors;
  for (Component c = FindNextComponent(nullptr, &all); c; c = FindNextComponent(c, &all)) {
    const ComponentInstance unit = opened(c);
    editors.emplace_back(unit, openEditor(unit));
  }
  EXPECT_EQ(editors.size(), 15u);
  std::mt19937 random(1);
  for (int i = 0; i < 10000; ++i) {
    const AudioUnitParameter any{editors[random() % editors.size()].first,
                                 static_cast<AudioUnitParameterID>(random() % 19), kAudioUnitScope_Global, 0};
    AUParameterSet(nullptr, nullptr, &any, std::ldexp(static_cast<float>(random()) / 4e9f - 0.3f, 7), 0);
    if (i % 500 == 0) runFor(0.03);
  }
  std::shuffle(editors.begin(), editors.end(), random);
  for (auto& [unit, window] : editors) {
    window->close();
    window.reset();
    CloseComponent(unit);
    runFor(0.01);
  }
  letTimersEnd();
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Editors, Lifecycle,
                         testing::Values(FourCharCode("sdly"), FourCharCode("mcmp"), FourCharCode("dcmp"),
                                         FourCharCode("lmtr"), FourCharCode("filt"), FourCharCode("lpas"),
                                         FourCharCode("pmeq"), FourCharCode("bpas"), FourCharCode("dely"),
                                         FourCharCode("mrev"), FourCharCode("tmpt")),
                         [](const auto& test) {
                           std::string name;
                           for (const int shift : {24, 16, 8, 0})
                             name += static_cast<char>(test.param >> shift & 255);
                           return name;
                         });

}  // namespace
