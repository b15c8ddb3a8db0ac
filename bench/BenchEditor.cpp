#include "BenchEditor.h"

#include <stdexcept>

#include "AUCocoaUIBase.h"
#include "NSBundle.h"
#include "NSRunLoop.h"

AudioUnit openEffect(const char (&subtype)[5]) {
  const ComponentDescription wanted{.componentType = FourCharCode("aufx"),
                                    .componentSubType = FourCharCode(subtype)};
  AudioUnit unit = nullptr;
  OpenAComponent(FindNextComponent(nullptr, &wanted), &unit);
  return unit;
}

std::shared_ptr<NSView> BenchEditor::makeView(AudioUnit unit) {
  static std::shared_ptr<NSBundle> bundle;
  static std::shared_ptr<NSObject> factory;
  if (!factory) {
    std::string error;
    bundle = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
    if (!bundle || !bundle->load(error)) throw std::runtime_error(error);
    factory = bundle->principalClass()->make();
  }
  return dynamic_cast<AUCocoaUIBase&>(*factory).uiViewForAudioUnit_withSize(unit, {0, 0});
}

BenchEditor::BenchEditor(const char (&subtype)[5], float scale)
    : display_(scale), unit_(openEffect(subtype)) {
  const auto view = makeView(unit_);
  window_ = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                       NSBackingStoreBuffered, false);
  window_->setContentView(view);
  window_->makeKeyAndOrderFront();
  redraw();
}

BenchEditor::~BenchEditor() {
  window_.reset();
  CloseComponent(unit_);
}

void BenchEditor::redraw() {
  NSRunLoop::currentRunLoop().runTurn();
}
void BenchEditor::advance(double seconds) {
  clock_.advance(NSRunLoop::currentRunLoop(), seconds);
}
