// All editors of the module at once, on a real X server.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

#include "AUCocoaUIBase.h"
#include "AUEventListener.h"
#include "AppKitClasses.h"
#include "NSBundle.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "RegisterEffects.h"
#include "X11Display.h"
#include "XServer.h"

namespace {

void runFor(double seconds) {
  NSRunLoop::currentRunLoop().run(NSDate::timeIntervalSinceReferenceDate() + seconds);
}

TEST(AllEditors, LiveThroughAStormOfChangesAndCloseInAnyOrder) {
  ASSERT_FALSE(XServer::instance().name().empty()) << "no X server: the Debian package xvfb is needed";
  setenv("DISPLAY", XServer::instance().name().c_str(), 1);
  NSRegisterAppKitClasses();
  RegisterEffects();
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
  ASSERT_TRUE(bundle && bundle->load(error)) << error;
  const auto factory = bundle->principalClass()->make();
  const auto display = X11Display::create(error, 1);
  ASSERT_TRUE(display) << error;

  const ComponentDescription all{.componentType = FourCharCode("aufx")};
  std::vector<std::pair<ComponentInstance, std::shared_ptr<NSWindow>>> editors;
  for (Component c = FindNextComponent(nullptr, &all); c; c = FindNextComponent(c, &all)) {
    ComponentInstance unit = nullptr;
    ASSERT_EQ(OpenAComponent(c, &unit), noErr);
    const auto view = dynamic_cast<AUCocoaUIBase&>(*factory).uiViewForAudioUnit_withSize(unit, {0, 0});
    auto window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                             NSBackingStoreBuffered, false);
    window->setContentView(view);
    window->makeKeyAndOrderFront();
    editors.emplace_back(unit, window);
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
  runFor(0.6);  // the timers of the editors end at their next tick
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

}  // namespace
