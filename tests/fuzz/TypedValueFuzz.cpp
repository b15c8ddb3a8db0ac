// Anything typed into a value field: the parameter takes the number, limited to its range, or keeps its
// value.
//
// An input: effect, which of its fields, how the typing ends, what is typed. Control characters are keys.

#include <algorithm>
#include <cmath>

#include "FuzzBytes.h"
#include "FuzzStage.h"
#include "Must.h"
#include "NSTextField.h"
#include "NumberText.h"
#include "jxAUParamKnobView.h"

namespace {

constexpr unsigned keys = 12;

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 32 || c == 127;
}

void type(FuzzStage& stage, const std::string& text) {
  for (size_t i = 0, end = 0; i < text.size(); i = std::max(end, i + 1)) {
    const auto code = static_cast<unsigned char>(text[i]);
    end = static_cast<size_t>(std::find_if(text.begin() + static_cast<ptrdiff_t>(i), text.end(), isControl) -
                              text.begin());
    if (!isControl(text[i]))
      stage.type(text.substr(i, end - i));
    else if (code < keys)
      stage.key(static_cast<NSKey>(code));
    else
      stage.type(std::string(1, "acvx"[code % 4]), NSControlKeyMask);
  }
}

/// Fields show six characters, four of them digits at least.
void checkTaken(const jxAUParam& param, const std::string& typed, float before) {
  const foundation::ParsedNumber number = foundation::numberPrefix(typed);
  if (!number.found) return must(param.floatValue() == before, "text without a number changes nothing");
  const double wanted = std::clamp<double>(number.value, param.minValue(), param.maxValue());
  const double tolerance = 2e-3 + std::abs(wanted) * 1e-3 + (param.isInteger() ? 0.5 : 0);
  must(std::abs(param.floatValue() - wanted) <= tolerance, "the number that was typed is taken: " + typed);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzBytes input(data, size);
  FuzzStage stage(input.byte());
  std::vector<NSTextField*> fields = all<NSTextField>(*stage.editor);
  std::erase_if(fields, [](const NSTextField* field) { return !field->acceptsTyping(); });
  NSTextField& field = *fields[input.below(fields.size())];
  const unsigned ending = input.below(5);
  const std::string text = input.rest();
  const jxAUParamKnobView* knob = nullptr;
  for (NSView* view = &field; view && !knob; view = view->superview())
    knob = dynamic_cast<jxAUParamKnobView*>(view);
  const float before = knob ? knob->auParam()->floatValue() : 0;

  stage.press(field);
  stage.release();
  must(field.isEditing(), "a pressed field is edited");
  type(stage, text);
  stage.advance(0.1);
  if (ending == 0) stage.key(NSKey::enter);
  if (ending == 1) stage.key(NSKey::tab);
  if (ending == 2) stage.press(NSPoint{1, 1});
  if (ending == 3) stage.client().displayChangedKeyboard(false);
  if (ending == 4) stage.key(NSKey::escape);
  stage.release();
  stage.advance(0.1);

  stage.checkParameters();
  const bool hasKeys = std::any_of(text.begin(), text.end(), isControl);
  must(!field.isEditing() || hasKeys, "the typing has ended");
  if (knob && !hasKeys) checkTaken(*knob->auParam(), ending == 4 ? "" : text, before);
  return 0;
}
