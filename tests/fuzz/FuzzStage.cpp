#include "FuzzStage.h"

#include <utility>

#include "MenuTracking.h"
#include "Must.h"
#include "NSLog.h"
#include "jxAUParam.h"

FuzzStage::FuzzStage(size_t number) : FuzzStage((bundle(), allEffects().at(number % effects))) {}

FuzzStage::FuzzStage(Component component) {
  NSSetLogSink([](std::string_view line) { must(false, "nothing is logged: " + std::string(line)); });
  open(component);
  parameters = effectParameters(unit.get());
}

FuzzStage::~FuzzStage() {
  closeChecked();
}

void FuzzStage::reopen() {
  Unit kept = std::move(unit);
  closeChecked();
  open(std::move(kept));
}

void FuzzStage::closeChecked() {
  const std::weak_ptr<NSView> closed = editor;
  close();
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
  EditorStage::advance(seconds);
  for (OffscreenWindow* shown : display.windows())
    for (const NSRect& rect : shown->takePresented())
      must(NSContainsRect({{0, 0}, shown->frame().size}, rect), "what is presented lies in its window");
}

void FuzzStage::checkParameters() const {
  for (const EffectParameter& p : parameters)
    if (p.isWritable())
      must(parameter(p.id) >= p.minValue && parameter(p.id) <= p.maxValue, p.name + " is in its range");
}
