#include "SnapshotCommand.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>

#include "ContactSheet.h"
#include "EditorBundle.h"
#include "EditorWindow.h"
#include "EffectArgument.h"
#include "EffectInstance.h"
#include "EffectRunner.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"
#include "ParameterLog.h"
#include "SetOption.h"
#include "SignalSource.h"

namespace {

constexpr Float64 sampleRate = 44100;
constexpr UInt32 blockFrames = 441;  // a hundredth of a second

struct Options {
  std::string effect;
  std::vector<std::string> settings;
  std::string input = "drums";
  double seconds = 2;
  float scale = 1;
  std::string output;
  std::string sheet;
};

struct Outcome {
  ExitStatus status = exitOk;
  std::string error;
};

/// Lets virtual time pass in blocks: audio through the effect, then all that is due in the editor.
bool play(EffectRunner& runner, SignalSource& source, VirtualClock& clock, double seconds) {
  std::vector<float> samples[kAudioMaximumChannels] = {std::vector<float>(blockFrames),
                                                       std::vector<float>(blockFrames)};
  float* const output[] = {samples[0].data(), samples[1].data()};
  const auto blocks = static_cast<long>(seconds * sampleRate / blockFrames);
  for (long i = 0; i < blocks; ++i) {
    if (runner.pull(source, output, blockFrames) != noErr) return false;
    clock.advance(NSRunLoop::currentRunLoop(), blockFrames / sampleRate);
  }
  return true;
}

Outcome drawEditor(const EditorBundle& bundle, Component component, const Options& options,
                   const std::string& file) {
  VirtualClock clock;
  OffscreenDisplay display(options.scale);
  const std::string code = effectCode(component);
  std::string error;
  const EffectInstance effect = openEffect(component);
  if (!effect) return {exitFailed, code + ": the effect cannot be opened"};
  if (!applySetOption(effect.get(), options.settings, error)) return {exitWrongArguments, error};
  auto source = SignalSource::named(options.input, sampleRate, error);
  if (!source) return {exitWrongArguments, error};
  const auto runner = EffectRunner::make(effect.get(), {sampleRate, 2, 2, blockFrames}, error);
  if (!runner) return {exitFailed, code + ": " + error};
  const auto editor = bundle.editorFor(effect.get());
  if (!editor) return {exitFailed, code + ": there is no editor for this effect"};

  const auto window = windowForEditor(display, editor, code);
  window->makeKeyAndOrderFront();
  ParameterLog(effect.get(), false).announceAll();
  if (!play(*runner, *source, clock, options.seconds)) return {exitFailed, code + ": rendering failed"};
  window->snapshot()->writePng(file);
  window->close();
  return {};
}

std::string fileIn(const std::string& folder, Component component) {
  return folder + "/" + effectCode(component) + ".png";
}

Outcome drawAll(const EditorBundle& bundle, const Options& options) {
  if (!options.settings.empty())
    return {exitWrongArguments, "--set: parameters differ between effects; expected one effect, not \"all\""};
  std::filesystem::create_directories(options.output);
  ContactSheet sheet(options.scale);
  std::set<std::string> onSheet;
  for (Component c : registeredEffects()) {
    const EffectInstance probe = openEffect(c);
    const auto editor = bundle.editorFor(probe.get());
    if (!editor) continue;
    const std::string file = fileIn(options.output, c);
    Outcome outcome = drawEditor(bundle, c, options, file);
    if (outcome.status != exitOk) return outcome;
    std::cout << file << "\n";
    if (onSheet.insert(editor->isa().name()).second) sheet.add(file, editor->frame().size);
  }
  if (!options.sheet.empty()) sheet.writePng(options.sheet);
  return {};
}

Outcome draw(const Options& options) {
  std::string error;
  const auto bundle = EditorBundle::load(error);
  if (!bundle) return {exitFailed, error};
  if (options.effect == "all") return drawAll(*bundle, options);
  const Component component = effectFromArgument(options.effect, error);
  if (!component) return {exitWrongArguments, error};
  const std::string& output = options.output;
  return drawEditor(*bundle, component, options,
                    std::filesystem::is_directory(output) ? fileIn(output, component) : output);
}

ExitStatus run(const Options& options) {
  Outcome outcome;
  try {
    outcome = draw(options);
  } catch (const std::exception& failure) {  // of files and folders
    outcome = {exitFailed, failure.what()};
  }
  return outcome.status == exitOk ? exitOk : report(outcome.status, outcome.error);
}

}  // namespace

Command snapshotCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand("snapshot", "Draw an editor to a PNG file; needs no display.");
  const auto options = std::make_shared<Options>();
  app->add_option("EFFECT", options->effect, std::string(effectArgumentHelp) + ", or \"all\"")->required();
  addSetOption(*app, options->settings);
  app->add_option("--input", options->input, signalSourceHelp)->capture_default_str();
  app->add_option("--seconds", options->seconds, "how much of the input has run through the effect")
      ->check(CLI::Range(0.0, 3600.0))
      ->capture_default_str();
  app->add_option("--scale", options->scale, "pixels to a point")
      ->check(CLI::Range(0.5, 8.0))
      ->capture_default_str();
  app->add_option("-o,--output", options->output,
                  "the PNG file, or a folder for it; with \"all\" the folder for them")
      ->required();
  app->add_option("--sheet", options->sheet,
                  "with \"all\", also this PNG file: one editor of each class, side by side");
  return {app, [options] { return run(*options); }};
}
