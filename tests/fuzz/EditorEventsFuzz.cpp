// A script of all that user, host and display can do to an editor: parameters stay in range, what is drawn in
// parts is what would be drawn whole, knobs show their parameters, and nothing is left after closing.
//
// An input: the effect, then operations of a byte and their arguments.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

#include "AUEffectBase.h"
#include "AUEventListener.h"
#include "AudioUnitProperties.h"
#include "FuzzBytes.h"
#include "FuzzStage.h"
#include "Must.h"
#include "QCView.h"
#include "jxAUParamKnobView.h"

namespace {

constexpr size_t longest = 150;  // operations
constexpr float largestSide = 900;

class Script {
 public:
  Script(const uint8_t* data, size_t size) : input_(data, size), stage_(input_.byte()) {}

  void run() {
    for (size_t i = 0; i < longest && !input_.isEmpty(); ++i) {
      step();
      stage_.checkParameters();
    }
    stage_.display.release();
    must(!stage_.window->isInGesture(), "a gesture has ended with its release");
    must(!stage_.display.isPointerHidden(), "the pointer is shown when no button is held");
    client().displayChangedVisibility(true);
    client().displayChangedKeyboard(false);  // changes wait for the end of an open menu
    stage_.advance(0.3);
    checkKnobs();
    checkPicture();
  }

 private:
  DisplayClient& client() const { return stage_.display.windows().front()->client(); }

  unsigned modifiers() {
    const unsigned bits = input_.byte();
    return (bits & 1 ? NSShiftKeyMask : 0) | (bits & 2 ? NSAlternateKeyMask : 0) |
           (bits & 4 ? NSControlKeyMask : 0) | (bits & 8 ? NSCommandKeyMask : 0);
  }
  /// In the middle of some view, or anywhere, a little beyond the edges too.
  NSPoint place() {
    const unsigned view = input_.byte();
    const auto views = stage_.all<NSView>();
    if (view < views.size()) return FuzzStage::middle(*views[view]);
    const NSSize size = stage_.window->frame().size;
    return {input_.fraction() * (size.width + 20) - 10, input_.fraction() * (size.height + 20) - 10};
  }
  NSPoint placeOnScreen() { return stage_.window->convertBaseToScreen(place()); }
  NSSize size() {
    const auto side = [this] { return std::floor(1 + input_.fraction() * largestSide); };
    const float width = side();
    return {width, side()};
  }
  float distance() { return (input_.fraction() - 0.5f) * 100; }
  const EffectParameter& parameter() { return stage_.parameters[input_.below(stage_.parameters.size())]; }
  float valueFor(const EffectParameter& p) {
    const unsigned part = input_.byte();
    if (part == 255) return input_.any<float>();
    return p.minValue + (p.maxValue - p.minValue) * static_cast<float>(part) / 254;
  }
  template <class T>
  void setProperty(AudioUnitPropertyID id, const T& value) {
    AudioUnitSetProperty(stage_.effect.get(), id, kAudioUnitScope_Global, 0, &value, sizeof value);
  }
  void moveWindow(NSRect frame) {
    stage_.display.windows().front()->setFrame(frame);
    client().displayChangedFrame(frame);
  }

  void step() {
    FuzzStage& s = stage_;
    const NSRect frame = s.window->frame();
    switch (input_.below(20)) {
      case 0:
        s.display.release();
        s.press(place(), modifiers(), 1 + static_cast<int>(input_.below(3)));
        break;
      case 1:
        s.display.moveBy(distance(), distance(), modifiers());
        break;
      case 2:
        s.display.release();
        break;
      case 3:
        s.display.wheel(placeOnScreen(), distance() / 10, distance() / 10);
        break;
      case 4:
        s.display.key(static_cast<NSKey>(input_.below(12)), modifiers());
        break;
      case 5:
        s.display.type(std::string(1, static_cast<char>(input_.byte())), modifiers());
        break;
      case 6:
        s.advance(input_.fraction());
        break;
      case 7: {
        const EffectParameter& p = parameter();
        const AudioUnitParameter address{s.effect.get(), p.id, kAudioUnitScope_Global, 0};
        AUParameterSet(nullptr, nullptr, &address, valueFor(p), 0);
        break;
      }
      case 8: {
        const EffectParameter& p = parameter();
        if (!p.isWritable()) s.effect->setMeter(p.id, distance() * 20);
        break;
      }
      case 9:
        setProperty(kAudioUnitProperty_PresentPreset,
                    AUPreset{static_cast<SInt32>(input_.below(6)), nullptr});
        break;
      case 10:
        setProperty(kAudioUnitProperty_RenderQuality, UInt32{input_.byte()});
        break;
      case 11:
        moveWindow({frame.origin, size()});
        break;
      case 12:
        moveWindow({{input_.fraction() * 1800 - 100, input_.fraction() * 1400 - 100}, frame.size});
        break;
      case 13:
        client().displayChangedVisibility(input_.below(2));
        break;
      case 14:
        client().displayLostPointer();
        break;
      case 15:
        client().displayChangedKeyboard(input_.below(2));
        break;
      case 16:
        client().displayExposed({place(), {distance(), distance()}});
        break;
      case 17:
        s.editor->setHidden(input_.below(2));
        break;
      case 18:
        s.window->setContentSize(size());
        break;
      case 19:
        s.close();
        s.open();
        break;
    }
  }

  void checkKnobs() const {
    for (const jxAUParamKnobView* view : stage_.all<jxAUParamKnobView>()) {
      const auto& knob = dynamic_cast<const jxValueKnob&>(*view->subviews().front());
      const jxAUParam& param = *view->auParam();
      const float range = param.maxValue() - param.minValue();
      must(std::abs(knob.floatValue() - param.floatValue()) <= std::abs(range) * 1e-4f,
           "a knob shows its parameter: " + param.parameterName());
    }
  }

  /// Where a clip cuts the edge of a stroke it comes out a little different.
  void checkPicture() const {
    for (QCView* moving : stage_.all<QCView>()) moving->setHidden(true);  // shows the present a little later
    const std::vector<uint8_t> inParts = picture();
    stage_.window->contentView()->setNeedsDisplay(true);
    const std::vector<uint8_t> whole = picture();
    const auto differs = [](uint8_t a, uint8_t b) { return std::abs(a - b) > 8; };
    const auto at = std::mismatch(whole.begin(), whole.end(), inParts.begin(), std::not_fn(differs)).first;
    const auto pixel = static_cast<int>((at - whole.begin()) / 4);
    const int width = stage_.window->snapshot()->physicalWidth();
    must(at == whole.end(), "what was drawn in parts is what is drawn whole, at " +
                                std::to_string(pixel % width) + ", " + std::to_string(pixel / width) +
                                " from the top left");
  }

  std::vector<uint8_t> picture() const {
    const Bitmap& bitmap = *stage_.window->snapshot();
    std::vector<uint8_t> bytes;
    for (int y = 0; y < bitmap.physicalHeight(); ++y) {
      const auto row = std::as_bytes(bitmap.row(y));
      const auto* first = reinterpret_cast<const uint8_t*>(row.data());
      bytes.insert(bytes.end(), first, first + row.size());
    }
    return bytes;
  }

  FuzzBytes input_;
  FuzzStage stage_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Script(data, size).run();
  return 0;
}
