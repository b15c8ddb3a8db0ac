// An editor that was opened and closed leaves nothing behind: memory, descriptors, windows, timers.

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>

#if defined(__SANITIZE_ADDRESS__)
// Of the sanitizer's run-time library; the compiler's package brings no header for it.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "AUCocoaUIBase.h"
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

/// The editor in a window, drawn, a knob pressed (which shows the overlay) and turned, all closed again.
void openUseAndClose(AUCocoaUIBase& factory, AudioUnit unit, XConnection* x) {
  const auto view = factory.uiViewForAudioUnit_withSize(unit, {0, 0});
  const auto window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                                 NSBackingStoreBuffered, false);
  window->setContentView(view);
  window->makeKeyAndOrderFront();
  NSRunLoop& loop = NSRunLoop::currentRunLoop();
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 0.005);
  NSView& knob = *firstKnob(*view);
  NSEvent event;
  event.locationInWindow = knob.convertPoint_toView({20, 20}, nullptr);
  knob.mouseDown(event);
  event.deltaY = -20;
  knob.mouseDragged(event);
  loop.run(NSDate::timeIntervalSinceReferenceDate() + 0.055);
  knob.mouseUp(event);
  window->close();
  XSync(x, False);
  loop.runTurn();
}

class Lifecycle : public testing::TestWithParam<OSType> {};

TEST_P(Lifecycle, TwoHundredEditorsLeaveNothingBehind) {
  ASSERT_FALSE(XServer::instance().name().empty()) << "no X server: the Debian package xvfb is needed";
  setenv("DISPLAY", XServer::instance().name().c_str(), 1);
  XConnection* x = XOpenDisplay(nullptr);
  NSRegisterAppKitClasses();
  RegisterEffects();
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
  ASSERT_TRUE(bundle && bundle->load(error)) << error;
  const auto factory = bundle->principalClass()->make();
  const auto display = X11Display::create(error, 1);
  ASSERT_TRUE(display) << error;
  const ComponentDescription wanted{.componentType = FourCharCode("aufx"), .componentSubType = GetParam()};
  ComponentInstance unit = nullptr;
  ASSERT_EQ(OpenAComponent(FindNextComponent(nullptr, &wanted), &unit), noErr);

  // A pressed knob's end-stop timer, which holds the knob, runs for 1.5 seconds more.
  const auto letTimersEnd = [] {
    NSRunLoop::currentRunLoop().run(NSDate::timeIntervalSinceReferenceDate() + 1.6);
  };
  size_t bytes = 0, descriptors = 0;
  unsigned windows = 0;
  for (int i = 0; i < 200; ++i) {
    openUseAndClose(dynamic_cast<AUCocoaUIBase&>(*factory), unit, x);
    if (i == 9) {
      letTimersEnd();
      bytes = liveBytes();
      descriptors = openDescriptors();
      windows = windowsOn(x);
    }
  }
  letTimersEnd();
  EXPECT_LT(liveBytes(), bytes + 256 * 1024);
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_EQ(windowsOn(x), windows);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
  CloseComponent(unit);
  XCloseDisplay(x);
}

INSTANTIATE_TEST_SUITE_P(Editors, Lifecycle,
                         testing::Values(FourCharCode("sdly"), FourCharCode("mcmp"), FourCharCode("dcmp"),
                                         FourCharCode("lmtr"), FourCharCode("filt"), FourCharCode("lpas"),
                                         FourCharCode("pmeq"), FourCharCode("bpas"), FourCharCode("dely"),
                                         FourCharCode("mrev")),
                         [](const auto& test) {
                           std::string name;
                           for (const int shift : {24, 16, 8, 0})
                             name += static_cast<char>(test.param >> shift & 255);
                           return name;
                         });

}  // namespace
