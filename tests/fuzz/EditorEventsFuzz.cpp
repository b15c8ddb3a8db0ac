// All that user, host and display can do to an editor: parameters stay in range, what is drawn in parts is
// what would be drawn whole, knobs show their parameters, nothing is logged, and nothing is left after
// closing.
//
// An input: the effect, then operations of a byte and their arguments.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iterator>

#include "AudioUnitProperties.h"
#include "EditorStage.h"
#include "EffectParameters.h"
#include "FuzzBytes.h"
#include "MenuTracking.h"
#include "Must.h"
#include "QCView.h"
#include "jxAUParamKnobView.h"

namespace {

constexpr size_t longest = 150;  // operations
constexpr float largestSide = 900;

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
    for (size_t i = 0; i < longest && !input_.isEmpty(); ++i) {
      operations_[input_.below(std::size(operations_))]();
      checkParameters();
    }
    release();
    must(!window->isInGesture(), "a gesture has ended with its release");
    must(!display.isPointerHidden(), "the pointer is shown when no button is held");
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
    const float width = std::floor(1 + input_.fraction() * largestSide);
    return {width, std::floor(1 + input_.fraction() * largestSide)};
  }
  float distance() { return (input_.fraction() - 0.5f) * 100; }
  const EffectParameter& anyParameter() { return parameters_[input_.below(parameters_.size())]; }
  float valueFor(const EffectParameter& p) {
    const unsigned part = input_.byte();
    if (part == 255) return input_.any<float>();
    return p.minValue + (p.maxValue - p.minValue) * static_cast<float>(part) / 254;
  }
  void moveWindow(NSRect frame) {
    display.windows().front()->setFrame(frame);
    client().displayChangedFrame(frame);
  }
  void pressAnywhere() {
    release();
    const NSPoint at = anyPlace();
    const unsigned held = modifiers();
    press(at, held, 1 + static_cast<int>(input_.below(3)));
  }
  void dragAnywhere() {
    const float dx = distance(), dy = distance();
    moveBy(dx, dy, modifiers());
  }
  void setAny() {
    const EffectParameter& p = anyParameter();
    set(p.id, valueFor(p));
  }
  void moveMeter() {
    const EffectParameter& p = anyParameter();
    if (!p.isWritable()) unit->setMeter(p.id, distance() * 20);
  }
  void changeTempo() {
    hostTempo = input_.any<double>();
    setGlobal(unit, kAudioUnitProperty_HostCallbacks, HostCallbackInfo{.beatAndTempoProc = &tellTempo});
  }
  void reopen() {
    Unit kept = std::move(unit);
    closeAndCheck();
    open(std::move(kept));
  }

  void closeAndCheck() {
    const std::weak_ptr<NSView> closed = editor;
    close();
    must(closed.expired(), "a closed editor is gone");
    must(display.windows().empty(), "no window is left of a closed editor");
    must(!display.isPointerHidden(), "the pointer is shown after a closed editor");
    must(!MenuTracking::current(), "no menu is left of a closed editor");
    must(jxAUParam::liveCount() == 0, "no binding is left of a closed editor");
    const NSRunLoop& loop = NSRunLoop::currentRunLoop();
    must(loop.timerCount() == 0, "no timer is left of a closed editor");
    must(loop.currentMode() == NSDefaultRunLoopMode, "the loop is in its default mode after a closed editor");
  }
  void checkParameters() const {
    for (const EffectParameter& p : parameters_)
      if (p.isWritable())
        must(parameter(p.id) >= p.minValue && parameter(p.id) <= p.maxValue, p.name + " is in its range");
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
  /// Where a clip cuts the edge of a stroke it comes out a little different.
  void checkPicture() const {
    for (QCView* moving : all<QCView>(*editor)) moving->setHidden(true);  // shows the present a little later
    const std::vector<uint8_t> inParts = bytesOf(*window->snapshot());
    window->contentView()->setNeedsDisplay(true);
    const std::vector<uint8_t> whole = bytesOf(*window->snapshot());
    const auto isLike = [](uint8_t a, uint8_t b) { return std::abs(a - b) <= 8; };
    const auto at = std::mismatch(whole.begin(), whole.end(), inParts.begin(), isLike).first;
    must(at == whole.end(), "what was drawn in parts is what is drawn whole, at pixel " +
                                std::to_string((at - whole.begin()) / 4));
  }
  static std::vector<uint8_t> bytesOf(const Bitmap& bitmap) {
    std::vector<uint8_t> bytes;
    for (int y = 0; y < bitmap.physicalHeight(); ++y)
      for (const std::byte b : std::as_bytes(bitmap.row(y))) bytes.push_back(static_cast<uint8_t>(b));
    return bytes;
  }

  FuzzBytes input_;
  std::vector<EffectParameter> parameters_;
  const std::function<void()> operations_[21] = {
      [this] { pressAnywhere(); },
      [this] { dragAnywhere(); },
      [this] { release(); },
      [this] { wheel(anyPlace(), distance() / 10); },
      [this] { key(static_cast<NSKey>(input_.below(12)), modifiers()); },
      [this] { type(std::string(1, static_cast<char>(input_.byte())), modifiers()); },
      [this] { advance(input_.fraction()); },
      [this] { setAny(); },
      [this] { moveMeter(); },
      [this] {
        setGlobal(unit, kAudioUnitProperty_PresentPreset, AUPreset{static_cast<SInt32>(input_.below(6))});
      },
      [this] { setGlobal(unit, kAudioUnitProperty_RenderQuality, UInt32{input_.byte()}); },
      [this] {
        moveWindow({window->frame().origin, anySize()});
      },
      [this] {
        moveWindow({{distance() * 18 + 800, distance() * 14 + 600}, window->frame().size});
      },
      [this] { client().displayChangedVisibility(input_.below(2)); },
      [this] { client().displayLostPointer(); },
      [this] { client().displayChangedKeyboard(input_.below(2)); },
      [this] {
        client().displayExposed({anyPlace(), {distance(), distance()}});
      },
      [this] { editor->setHidden(input_.below(2)); },
      [this] { window->setContentSize(anySize()); },
      [this] { reopen(); },
      [this] { changeTempo(); },
  };
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Operations(data, size).run();
  return 0;
}
