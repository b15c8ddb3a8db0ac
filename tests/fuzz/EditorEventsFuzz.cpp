// All that user, host and display can do to an editor. An input: the effect, then operations of a byte and
// their arguments.

#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <iterator>

#include "AudioUnitProperties.h"
#include "EditorStage.h"
#include "EffectParameters.h"
#include "MenuTracking.h"
#include "Must.h"
#include "QCView.h"
#include "jxAUParamKnobView.h"

namespace {

constexpr size_t longest = 150;  // operations

/// The bytes of one input, read from the front as choices and numbers. Past the end everything is 0.
class FuzzBytes {
 public:
  FuzzBytes(const uint8_t* data, size_t size) : data_(data), left_(size) {}

  bool isEmpty() const { return left_ == 0; }
  unsigned byte() { return left_ == 0 ? 0 : (--left_, *data_++); }
  unsigned below(size_t count) { return byte() % static_cast<unsigned>(count); }
  /// One of 256 values from 0 to 1.
  float fraction() { return static_cast<float>(byte()) / 255; }
  /// The number that the next bytes are, whatever it is.
  template <class T>
  T any() {
    std::array<uint8_t, sizeof(T)> bytes;
    for (uint8_t& b : bytes) b = static_cast<uint8_t>(byte());
    return std::bit_cast<T>(bytes);
  }

 private:
  const uint8_t* data_;
  size_t left_;
};

double hostTempo = 120;

OSStatus tellTempo(void*, Float64*, Float64* tempo) {
  *tempo = hostTempo;
  return noErr;
}

class Operations : public EditorStage {
 public:
  Operations(const uint8_t* data, size_t size) : input_(data, size) {
    NSSetLogSink([](std::string_view line) { must(false, "nothing is logged: " + std::string(line)); });
    const std::vector<Component> effects = allEffects();
    open(effects[input_.below(effects.size())]);
    parameters_ = effectParameters(unit.get());
  }

  void run() {
    for (size_t i = 0; i < longest && !input_.isEmpty(); ++i)
      operations_[input_.below(std::size(operations_))]();
    release();
    must(!window->isInGesture() && !display.isPointerHidden(), "a gesture has ended with its release");
    editor->setHidden(false);
    client().displayChangedVisibility(true);
    client().displayChangedKeyboard(false);  // changes wait for the end of an open menu
    advance(0.3);
    checkKnobs();
    checkPicture();
    closeAndCheck();
  }

 private:
  void advance(double seconds) override {
    EditorStage::advance(seconds);
    for (OffscreenWindow* shown : display.windows())
      for (const NSRect& rect : shown->takePresented())
        must(NSContainsRect({{0, 0}, shown->frame().size}, rect), "what is presented lies in its window");
  }

  unsigned modifiers() {
    const unsigned bits = input_.byte();
    return (bits & 1 ? NSShiftKeyMask : 0) | (bits & 2 ? NSAlternateKeyMask : 0) |
           (bits & 4 ? NSControlKeyMask : 0) | (bits & 8 ? NSCommandKeyMask : 0);
  }
  /// In the middle of some view, or anywhere, a little beyond the edges too.
  NSPoint anyPlace() {
    const unsigned view = input_.byte();
    const auto views = all<NSView>(*editor);
    if (view < views.size()) return middleOf(*views[view]);
    const NSSize size = window->frame().size;
    const float x = input_.fraction() * (size.width + 20) - 10;
    return {x, input_.fraction() * (size.height + 20) - 10};
  }
  NSSize anySize() {
    const float width = std::floor(1 + input_.fraction() * 900);
    return {width, std::floor(1 + input_.fraction() * 900)};
  }
  float distance() { return (input_.fraction() - 0.5f) * 100; }
  const EffectParameter& anyParameter() { return parameters_[input_.below(parameters_.size())]; }
  void moveWindow(NSPoint origin, NSSize size) {
    display.windows().front()->setFrame({origin, size});
    client().displayChangedFrame({origin, size});
  }
  void closeAndCheck() {
    const std::weak_ptr<NSView> closed = editor;
    close();
    must(closed.expired(), "a closed editor is gone");
    must(display.windows().empty() && !MenuTracking::current(), "no window or menu is left of it");
    must(!display.isPointerHidden(), "the pointer is shown after a closed editor");
    must(jxAUParam::liveCount() == 0, "no binding is left of a closed editor");
    const NSRunLoop& loop = NSRunLoop::currentRunLoop();
    must(loop.timerCount() == 0, "no timer is left of a closed editor");
    must(loop.currentMode() == NSDefaultRunLoopMode, "the loop is in its default mode after a closed editor");
  }
  void checkKnobs() const {
    for (const jxAUParamKnobView* view : all<jxAUParamKnobView>(*editor)) {
      const auto& knob = dynamic_cast<const jxValueKnob&>(*view->subviews().front());
      const jxAUParam& param = *view->auParam();
      const float range = param.maxValue() - param.minValue();
      must(std::abs(knob.floatValue() - param.floatValue()) <= std::abs(range) * 1e-4f,
           "a knob shows its parameter: " + param.parameterName());
    }
  }
  void checkPicture() const {
    for (QCView* moving : all<QCView>(*editor)) moving->setHidden(true);  // shows the present a little later
    const NSRect all = editor->bounds();
    const Bitmap whole = painted(all.size, 1, [&] {
      NSColor::whiteColor()->set();  // what a window has for a ground
      NSBezierPath::fillRect(all);
      editor->displayRect(all);
    });
    must(differences(*window->snapshot(), whole, all) == 0, "what was drawn in parts is what is drawn whole");
  }

  FuzzBytes input_;
  std::vector<EffectParameter> parameters_;
  const std::function<void()> operations_[21] = {
      [this] {
        release();
        const NSPoint at = anyPlace();
        const unsigned held = modifiers();
        press(at, held, 1 + static_cast<int>(input_.below(3)));
      },
      [this] {
        const float dx = distance(), dy = distance();
        moveBy(dx, dy, modifiers());
      },
      [this] { release(); },
      [this] { wheel(anyPlace(), distance() / 10); },
      [this] { key(static_cast<NSKey>(input_.below(12)), modifiers()); },
      [this] { type(std::string(1, static_cast<char>(input_.byte())), modifiers()); },
      [this] { advance(input_.fraction()); },
      [this] {
        const EffectParameter& p = anyParameter();
        const unsigned part = input_.byte();
        const float inRange = p.minValue + (p.maxValue - p.minValue) * static_cast<float>(part) / 254;
        set(p.id, part == 255 ? input_.any<float>() : inRange);
      },
      [this] {
        const EffectParameter& p = anyParameter();
        if (!p.isWritable()) unit->setMeter(p.id, distance() * 20);
      },
      [this] {
        setGlobal(unit, kAudioUnitProperty_PresentPreset, AUPreset{static_cast<SInt32>(input_.below(6))});
      },
      [this] { setGlobal(unit, kAudioUnitProperty_RenderQuality, UInt32{input_.byte()}); },
      [this] { moveWindow(window->frame().origin, anySize()); },
      [this] {
        const float x = distance() * 18 + 800;
        moveWindow({x, distance() * 14 + 600}, window->frame().size);
      },
      [this] { client().displayChangedVisibility(input_.below(2)); },
      [this] { client().displayLostPointer(); },
      [this] { client().displayChangedKeyboard(input_.below(2)); },
      [this] {
        client().displayExposed({anyPlace(), {distance(), distance()}});
      },
      [this] { editor->setHidden(input_.below(2)); },
      [this] { window->setContentSize(anySize()); },
      [this] {
        Unit kept = std::move(unit);
        closeAndCheck();
        open(std::move(kept));
      },
      [this] {
        hostTempo = input_.any<double>();
        setGlobal(unit, kAudioUnitProperty_HostCallbacks, HostCallbackInfo{.beatAndTempoProc = &tellTempo});
      },
  };
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Operations(data, size).run();
  return 0;
}
