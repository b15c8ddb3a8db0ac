#include "ParamsCommand.h"

#include <iostream>
#include <memory>

#include "AudioUnitProperties.h"
#include "EffectArgument.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "NumberText.h"
#include "TextTable.h"

namespace {

std::string remarks(const EffectParameter& p) {
  std::string text;
  const auto add = [&](const std::string& remark) { text += (text.empty() ? "" : ", ") + remark; };
  if (p.flags & kAudioUnitParameterFlag_DisplayLogarithmic) add("log");
  if (!p.isWritable()) add("read-only");
  switch (p.flags & kAudioUnitParameterFlag_DisplayMask) {
    case kAudioUnitParameterFlag_DisplaySquareRoot:
      add("square root");
      break;
    case kAudioUnitParameterFlag_DisplaySquared:
      add("squared");
      break;
    case kAudioUnitParameterFlag_DisplayExponential:
      add("exponential");
      break;
    default:
      break;
  }
  for (size_t i = 0; i < p.valueNames.size(); ++i)
    add(foundation::exactText(p.minValue + static_cast<float>(i)) + " = " + p.valueNames[i]);
  return text;
}

ExitStatus run(const std::string& argument) {
  std::string error;
  const Component component = effectFromArgument(argument, error);
  if (!component) return report(exitWrongArguments, error);
  const EffectInstance effect = openEffect(component);
  if (!effect) return report(exitFailed, argument + ": the effect cannot be opened");
  std::vector<std::vector<std::string>> rows{{"id", "name", "unit", "min", "max", "default", "current", ""}};
  for (const EffectParameter& p : effectParameters(effect.get()))
    rows.push_back({std::to_string(p.id), p.name, p.unit, foundation::exactText(p.minValue),
                    foundation::exactText(p.maxValue), foundation::exactText(p.defaultValue),
                    foundation::exactText(p.value), remarks(p)});
  std::cout << effectName(component) << "\n"
            << textTable(rows, {true, false, false, true, true, true, true, false});
  return exitOk;
}

}  // namespace

Command paramsCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand("params", "Print the parameters of an effect.");
  const auto effect = std::make_shared<std::string>();
  app->add_option("EFFECT", *effect, effectArgumentHelp)->required();
  return {app, [effect] { return run(*effect); }};
}
