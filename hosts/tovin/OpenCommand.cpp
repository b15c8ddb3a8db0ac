#include "OpenCommand.h"

#include <memory>
#include <optional>

#include "AutomationInput.h"
#include "EditorBundle.h"
#include "EditorWindow.h"
#include "EffectArgument.h"
#include "EffectInstance.h"
#include "EffectRunner.h"
#include "HostTempo.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "OpenDisplay.h"
#include "ParameterLog.h"
#include "PresetBar.h"
#include "RealTimePlayer.h"
#include "SetOption.h"
#include "SignalSource.h"
#include "TerminationSignals.h"

namespace {

constexpr Float64 sampleRate = 44100;
constexpr UInt32 maximumFrames = 4096;

struct Options {
  std::string effect;
  std::vector<std::string> settings;
  std::string input = "drums";
  double tempo = 120;
  float scale = 0;
  double seconds = 0;
  bool log = false;
};

/// Ends the run loop when the window goes.
class WindowDelegate : public NSObject {
 public:
  const Class& isa() const override {
    static const Class c = Class::of<WindowDelegate>("WindowDelegate", NSObject::record())
                               .answers<&WindowDelegate::windowWillClose>("windowWillClose:");
    return c;
  }
  void windowWillClose(NSObject*) { NSRunLoop::currentRunLoop().stop(); }
};

ExitStatus run(const Options& options) {
  const TerminationSignals signals;
  std::string error;
  const Component component = effectFromArgument(options.effect, error);
  if (!component) return report(exitWrongArguments, error);
  const EffectInstance effect = openEffect(component);
  if (!effect) return report(exitFailed, options.effect + ": the effect cannot be opened");
  if (!applySetOption(effect.get(), options.settings, error)) return report(exitWrongArguments, error);
  auto source = SignalSource::named(options.input, sampleRate, error);
  if (!source) return report(exitWrongArguments, error);
  const auto bundle = EditorBundle::load(error);
  if (!bundle) return report(exitFailed, error);
  const auto display = openDisplay(error, options.scale);
  if (!display) return report(exitFailed, error);
  const auto runner = EffectRunner::make(effect.get(), {sampleRate, 2, 2, maximumFrames}, error);
  if (!runner) return report(exitFailed, options.effect + ": " + error);

  HostTempo tempo(effect.get(), options.tempo);
  ParameterLog log(effect.get(), options.log);
  auto editor = bundle->editorFor(effect.get());
  if (!editor) return report(exitFailed, options.effect + ": there is no editor for this effect");
  const auto window = windowForEditor(*display, editor, effectName(component),
                                      std::make_shared<PresetBar>(effect.get(), NSWidth(editor->frame())));
  editor.reset();
  const auto delegate = std::make_shared<WindowDelegate>();
  window->setDelegate(delegate.get());
  window->makeKeyAndOrderFront();
  log.announceAll();

  RealTimePlayer player(*runner, *source);
  player.start();
  const AutomationInput automation(effect.get(), tempo);
  NSRunLoop::currentRunLoop().run(options.seconds > 0
                                      ? NSDate::timeIntervalSinceReferenceDate() + options.seconds
                                      : RunLoopObserver::never);
  player.stop();
  window->setDelegate(nullptr);
  window->close();
  return exitOk;
}

}  // namespace

Command openCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand(
      "open",
      "Open the editor of an effect that plays. Lines \"ID VALUE\" on standard input change parameters, "
      "\"tempo BPM\" the tempo.");
  const auto options = std::make_shared<Options>();
  app->add_option("EFFECT", options->effect, effectArgumentHelp)->required();
  addSetOption(*app, options->settings);
  app->add_option("--input", options->input, signalSourceHelp)->capture_default_str();
  app->add_option("--tempo", options->tempo, "the host's beats per minute")
      ->check(CLI::Range(slowestTempo, fastestTempo))
      ->capture_default_str();
  app->add_option("--scale", options->scale, "pixels to a point; else as the display is set")
      ->check(CLI::Range(0.5, 8.0));
  app->add_option("--seconds", options->seconds, "close after that time")->check(CLI::PositiveNumber);
  app->add_flag("--log", options->log, "print each change of a parameter as \"ID VALUE\"");
  return {app, [options] { return run(*options); }};
}
