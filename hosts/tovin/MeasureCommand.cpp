#include "MeasureCommand.h"

#include <fstream>
#include <iostream>
#include <memory>

#include "EffectArgument.h"
#include "EffectInstance.h"
#include "ImpulseAUwrapper.h"
#include "NSException.h"
#include "NumberText.h"
#include "SetOption.h"

namespace {

constexpr unsigned long order = 11;  // 2048 frames and bins

struct Options {
  std::string effect;
  std::vector<std::string> settings;
  bool impulse = false;
  double rate = 44100;
  std::string output;
};

void writeTable(std::ostream& out, ImpulseAUwrapper& renderer, const Options& options) {
  const float* values = options.impulse ? renderer.renderImpulse() : renderer.freqResponse();
  const auto count = renderer.bufferSize();
  const double step = options.impulse ? 1 / options.rate : options.rate / (2.0 * static_cast<double>(count));
  out << (options.impulse ? "time,sample\n" : "frequency,dB\n");
  for (unsigned long i = 0; i < count; ++i)
    out << foundation::exactText(static_cast<float>(static_cast<double>(i) * step)) << ','
        << foundation::exactText(values[i]) << '\n';
  out.flush();
}

ExitStatus run(const Options& options) {
  std::string error;
  const Component component = effectFromArgument(options.effect, error);
  if (!component) return report(exitWrongArguments, error);
  const EffectInstance effect = openEffect(component);
  if (!effect) return report(exitFailed, options.effect + ": the effect cannot be opened");
  if (!applySetOption(effect.get(), options.settings, error)) return report(exitWrongArguments, error);

  std::ofstream file;
  if (!options.output.empty()) file.open(options.output);
  std::ostream& out = options.output.empty() ? std::cout : file;
  try {
    if (out) {
      ImpulseAUwrapper renderer(effect.get(), options.rate, order, false);
      writeTable(out, renderer, options);
    }
  } catch (const NSException& failure) {
    return report(exitFailed, options.effect + ": it cannot be measured at " +
                                  foundation::exactText(static_cast<float>(options.rate)) +
                                  " Hz: " + failure.reason());
  }
  if (out) return exitOk;
  return report(exitFailed,
                (options.output.empty() ? "standard output" : options.output) + ": it cannot be written");
}

}  // namespace

Command measureCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand(
      "measure", "Print the frequency response of an effect, measured as the editors' graphs do it.");
  const auto options = std::make_shared<Options>();
  app->add_option("EFFECT", options->effect, effectArgumentHelp)->required();
  addSetOption(*app, options->settings);
  app->add_flag("--impulse", options->impulse,
                "the answer to an impulse instead: \"time,sample\", in seconds");
  app->add_option("--rate", options->rate, "sample rate in Hz")
      ->check(CLI::Range(500.0, 384000.0))
      ->capture_default_str();
  app->add_option("-o,--output", options->output, "the file to write; else standard output");
  return {app, [options] { return run(*options); }};
}
