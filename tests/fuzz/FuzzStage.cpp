#include "FuzzStage.h"

#include <cmath>

#include "EffectArgument.h"
#include "MenuTracking.h"
#include "Must.h"
#include "NSLog.h"
#include "RegisterEffects.h"
#include "jxAUParam.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

Component effectNumber(size_t number) {
  const ComponentDescription all{.componentType = FourCharCode("aufx")};
  Component component = FindNextComponent(nullptr, &all);
  for (; number > 0; --number) component = FindNextComponent(component, &all);
  return component;
}

Component effectWithCode(const std::string& code) {
  std::string error;
  const Component component = effectFromArgument(code, error);
  must(component, error);
  return component;
}

}  // namespace

const EditorBundle& fuzzBundle() {
  static const auto bundle = [] {
    RegisterEffects();
    std::string error;
    auto linked = EditorBundle::linked(TOVIN_BUNDLE, &TovinBundleClasses, error);
    must(linked != nullptr, error);
    return linked;
  }();
  return *bundle;
}

FuzzStage::FuzzStage(size_t number) : FuzzStage((fuzzBundle(), effectNumber(number % effects))) {}

FuzzStage::FuzzStage(const std::string& code) : FuzzStage((fuzzBundle(), effectWithCode(code))) {}

FuzzStage::FuzzStage(Component component)
    : effect(openEffect(component)), parameters(effectParameters(effect.get())) {
  NSSetLogSink([](std::string_view line) { must(false, "nothing is logged: " + std::string(line)); });
  open();
}

FuzzStage::~FuzzStage() {
  close();
  NSSetLogSink(nullptr);
}

void FuzzStage::open() {
  editor = fuzzBundle().editorFor(effect.get());
  window = std::make_shared<NSWindow>(NSRect{{300, 400}, editor->frame().size}, NSTitledWindowMask,
                                      NSBackingStoreBuffered, false);
  window->setContentView(editor);
  window->setInitialFirstResponder(editor.get());
  window->makeKeyAndOrderFront();
  advance(0.1);
}

void FuzzStage::close() {
  const std::weak_ptr<NSView> closed = editor;
  window->close();
  window.reset();
  editor.reset();
  advance(2);  // an end-stop timer may still hold a knob
  must(closed.expired(), "a closed editor is gone");
  must(display.windows().empty(), "no window is left of a closed editor");
  must(!display.isPointerHidden(), "the pointer is shown after a closed editor");
  must(!MenuTracking::current(), "no menu is left of a closed editor");
  must(jxAUParam::liveCount() == 0, "no binding is left of a closed editor");
  NSRunLoop& loop = NSRunLoop::currentRunLoop();
  must(loop.timerCount() == 0, "no timer is left of a closed editor");
  must(loop.currentMode() == NSDefaultRunLoopMode, "the loop is in its default mode after a closed editor");
}

void FuzzStage::advance(double seconds) {
  clock.advance(NSRunLoop::currentRunLoop(), seconds);
  for (OffscreenWindow* shown : display.windows())
    for (const NSRect& rect : shown->takePresented())
      must(NSContainsRect({{0, 0}, shown->frame().size}, rect), "what is presented lies in its window");
}

void FuzzStage::press(NSPoint inWindow, unsigned modifiers, int clickCount) {
  display.press(window->convertBaseToScreen(inWindow), modifiers, clickCount);
}

float FuzzStage::value(AudioUnitParameterID id) const {
  Float32 value = NAN;
  AudioUnitGetParameter(effect.get(), id, kAudioUnitScope_Global, 0, &value);
  return value;
}

void FuzzStage::checkParameters() const {
  for (const EffectParameter& p : parameters)
    if (p.isWritable())
      must(value(p.id) >= p.minValue && value(p.id) <= p.maxValue, p.name + " is in its range");
}

NSPoint FuzzStage::middle(const NSView& view) {
  const NSSize size = view.bounds().size;
  return view.convertPoint_toView({size.width / 2, size.height / 2}, nullptr);
}
