#include "SetOption.h"

#include <algorithm>
#include <charconv>

#include "AUEventListener.h"
#include "EffectParameters.h"
#include "NumberText.h"

namespace {

std::string listOfIds(const std::vector<EffectParameter>& parameters) {
  std::string list;
  for (const EffectParameter& p : parameters)
    if (p.isWritable()) list += (list.empty() ? "" : ", ") + std::to_string(p.id);
  return list;
}

std::string rangeText(const EffectParameter& p) {
  const std::string range = foundation::exactText(p.minValue) + " to " + foundation::exactText(p.maxValue);
  return p.unit.empty() ? range : range + " " + p.unit;
}

/// Empty when it was set, else what was expected.
std::string setOne(AudioUnit unit, const std::vector<EffectParameter>& parameters, std::string_view text) {
  const size_t equals = text.find('=');
  if (equals == std::string_view::npos) return "expected ID=VALUE, as in 0=100";

  AudioUnitParameterID id = 0;
  const char* end = text.data() + equals;
  const auto parsed = std::from_chars(text.data(), end, id);
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const EffectParameter& p) { return p.id == id; });
  if (parsed.ec != std::errc() || parsed.ptr != end || found == parameters.end())
    return "there is no parameter \"" + std::string(text.substr(0, equals)) + "\"; there are " +
           listOfIds(parameters);
  if (!found->isWritable()) return "parameter " + std::to_string(id) + " can only be read";

  double value = 0;
  const std::string_view number = text.substr(equals + 1);
  if (!foundation::wholeNumberText(number, value))
    return "\"" + std::string(number) + "\" is no number; expected " + rangeText(*found);
  // Compared as the parameter's own type: the text of a limit such as 0.1 must be inside.
  const auto asFloat = static_cast<Float32>(value);
  if (!(asFloat >= found->minValue && asFloat <= found->maxValue))
    return "\"" + std::string(number) + "\" is out of range; expected " + rangeText(*found);

  const AudioUnitParameter parameter{unit, id};
  return AUParameterSet(nullptr, nullptr, &parameter, asFloat, 0) == noErr ? "" : "the effect refused it";
}

}  // namespace

void addSetOption(CLI::App& command, std::vector<std::string>& texts) {
  command.add_option("--set", texts, "set a parameter of the effect; may be given several times")
      ->type_name("ID=VALUE")
      ->type_size(1)
      ->allow_extra_args(false);
}

bool applySetOption(AudioUnit unit, const std::vector<std::string>& texts, std::string& error) {
  const std::vector<EffectParameter> parameters = effectParameters(unit);
  for (const std::string& text : texts) {
    const std::string expected = setOne(unit, parameters, text);
    if (expected.empty()) continue;
    error = "--set " + text + ": " + expected;
    return false;
  }
  return true;
}
