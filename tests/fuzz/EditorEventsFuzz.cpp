// A script of all that user, host and display can do to an editor: parameters stay in range, what is drawn in
// parts is what would be drawn whole, knobs show their parameters, and nothing is left after closing.
//
// An input: the effect, then operations of a byte and their arguments.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

#include "AUEffectBase.h"
#include "AudioUnitProperties.h"
#include "FuzzBytes.h"
#include "FuzzStage.h"
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

class Operations {
 public:
  Operations(const uint8_t* data, size_t size) : input_(data, size), stage_(input_.byte()) {}

  void run() {
    for (size_t i = 0; i < longest && !input_.isEmpty(); ++i) {
      step();
      stage_.checkParameters();
    }
    stage_.display.release();
    must(!stage_.window->isInGesture(), "a gesture has ended with its release");
    must(!stage_.display.isPointerHidden(), "the pointer is shown when no button is held");
    stage_.client().displayChangedVisibility(true);
    stage_.client().displayChangedKeyboard(false);  // changes wait for the end of an open menu
    stage_.advance(0.3);
    checkKnobs();
    checkPicture();
  }

 private:
  unsigned modifiers() {
    const unsigned bits = input_.byte();
    return (bits & 1 ? NSShiftKeyMask : 0) | (bits & 2 ? NSAlternateKeyMask : 0) |
           (bits & 4 ? NSControlKeyMask : 0) | (bits & 8 ? NSCommandKeyMask : 0);
  }
  /// In the middle of some view, or anywhere, a little beyond the edges too.
  NSPoint place() {
    const unsigned view = input_.byte();
    const auto views = all<NSView>(*stage_.editor);
    if (view < views.size()) return FuzzStage::middleOf(*views[view]);
    const NSSize size = stage_.window->frame().size;
    return {input_.fraction() * (size.width + 20) - 10, input_.fraction() * (size.height + 20) - 10};
  }
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
  void moveWindow(NSRect frame) {
    stage_.display.windows().front()->setFrame(frame);
    stage_.client().displayChangedFrame(frame);
  }

  void step() {
    FuzzStage& s = stage_;
    const NSRect frame = s.window->frame();
    switch (input_.below(21)) {
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
        s.display.wheel(s.onScreen(place()), distance() / 10, distance() / 10);
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
        s.set(p.id, valueFor(p));
        break;
      }
      case 8: {
        const EffectParameter& p = parameter();
        if (!p.isWritable()) s.unit->setMeter(p.id, distance() * 20);
        break;
      }
      case 9:
        s.setProperty(kAudioUnitProperty_PresentPreset,
                      AUPreset{static_cast<SInt32>(input_.below(6)), nullptr});
        break;
      case 10:
        s.setProperty(kAudioUnitProperty_RenderQuality, UInt32{input_.byte()});
        break;
      case 11:
        moveWindow({frame.origin, size()});
        break;
      case 12:
        moveWindow({{input_.fraction() * 1800 - 100, input_.fraction() * 1400 - 100}, frame.size});
        break;
      case 13:
        stage_.client().displayChangedVisibility(input_.below(2));
        break;
      case 14:
        stage_.client().displayLostPointer();
        break;
      case 15:
        stage_.client().displayChangedKeyboard(input_.below(2));
        break;
      case 16:
        stage_.client().displayExposed({place(), {distance(), distance()}});
        break;
      case 17:
        s.editor->setHidden(input_.below(2));
        break;
      case 18:
        s.window->setContentSize(size());
        break;
      case 19:
        s.reopen();
        break;
      case 20:
        hostTempo = input_.any<double>();
        s.setProperty(kAudioUnitProperty_HostCallbacks, HostCallbackInfo{.beatAndTempoProc = &tellTempo});
        break;
    }
  }

  void checkKnobs() const {
    for (const jxAUParamKnobView* view : all<jxAUParamKnobView>(*stage_.editor)) {
      const auto& knob = dynamic_cast<const jxValueKnob&>(*view->subviews().front());
      const jxAUParam& param = *view->auParam();
      const float range = param.maxValue() - param.minValue();
      must(std::abs(knob.floatValue() - param.floatValue()) <= std::abs(range) * 1e-4f,
           "a knob shows its parameter: " + param.parameterName());
    }
  }

  /// Where a clip cuts the edge of a stroke it comes out a little different.
  void checkPicture() const {
    for (QCView* moving : all<QCView>(*stage_.editor))
      moving->setHidden(true);  // shows the present a little later
    const std::vector<uint8_t> inParts = picture();
    stage_.window->contentView()->setNeedsDisplay(true);
    const std::vector<uint8_t> whole = picture();
    const auto differs = [](uint8_t a, uint8_t b) { return std::abs(a - b) > 8; };
    const auto at = std::mismatch(whole.begin(), whole.end(), inParts.begin(), std::not_fn(differs)).first;
    must(at == whole.end(), "what was drawn in parts is what is drawn whole, at pixel " +
                                std::to_string((at - whole.begin()) / 4) + " of " +
                                std::to_string(stage_.window->snapshot()->physicalWidth()) + " in a row");
  }
  std::vector<uint8_t> picture() const {
    const Bitmap& bitmap = *stage_.window->snapshot();
    std::vector<uint8_t> bytes;
    for (int y = 0; y < bitmap.physicalHeight(); ++y)
      for (const std::byte b : std::as_bytes(bitmap.row(y))) bytes.push_back(static_cast<uint8_t>(b));
    return bytes;
  }

  FuzzBytes input_;
  FuzzStage stage_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Operations(data, size).run();
  return 0;
}
