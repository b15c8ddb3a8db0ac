#include "ProcessCommand.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sndfile.hh>
#include <vector>

#include "EffectArgument.h"
#include "EffectInstance.h"
#include "EffectRunner.h"
#include "ProgressBar.h"
#include "SetOption.h"

namespace fs = std::filesystem;

namespace {

constexpr UInt32 blockFrames = 512;

struct Options {
  std::string effect;
  std::string in;
  std::string out;
  std::vector<std::string> settings;
};

/// One block of samples, both as the file has them (frame by frame) and as an effect does.
struct Block {
  explicit Block(UInt32 channelCount) : channels(channelCount), interleaved(blockFrames * channelCount) {
    for (UInt32 c = 0; c < channels; ++c) {
      planes[c].resize(blockFrames);
      pointers[c] = planes[c].data();
    }
  }

  void split() {
    for (size_t i = 0; i < interleaved.size(); ++i) planes[i % channels][i / channels] = interleaved[i];
  }
  void join() {
    for (size_t i = 0; i < interleaved.size(); ++i) interleaved[i] = planes[i % channels][i / channels];
  }

  UInt32 channels;
  std::vector<float> interleaved;
  std::vector<float> planes[kAudioMaximumChannels];
  float* pointers[kAudioMaximumChannels] = {};
};

/// Everything of `in` through the effect into `out`, the effect's latency taken out again. Empty, or what
/// went wrong.
std::string convert(SndfileHandle& in, SndfileHandle& out, EffectRunner& runner, const Options& options) {
  ProgressBar progress;
  Block block(runner.format().outputs);
  sf_count_t skip = runner.latencyFrames();
  sf_count_t got = 0;
  sf_count_t written = 0;
  bool ended = false;
  while (!ended || written < got) {
    const sf_count_t read = ended ? 0 : in.readf(block.interleaved.data(), blockFrames);
    if (in.error()) return options.in + ": " + in.strError();
    got += read;
    ended = read < blockFrames;
    if (ended && written == got) break;
    std::fill(block.interleaved.begin() + read * block.channels, block.interleaved.end(), 0.0f);
    block.split();
    if (const OSStatus status = runner.render(block.pointers, block.pointers, blockFrames))
      return options.effect + ": rendering failed (status " + std::to_string(status) + ")";
    block.join();
    const sf_count_t dropped = std::min<sf_count_t>(skip, blockFrames);
    skip -= dropped;
    const sf_count_t wanted = std::min(blockFrames - dropped, got - written);
    if (wanted > 0 && out.writef(block.interleaved.data() + dropped * block.channels, wanted) != wanted)
      return options.out + ": " + out.strError();
    written += wanted;
    progress.show(static_cast<double>(written) / static_cast<double>(std::max<sf_count_t>(in.frames(), 1)));
  }
  out.writeSync();
  return out.error() ? options.out + ": " + out.strError() : "";
}

ExitStatus run(const Options& options) {
  std::string error;
  const Component component = effectFromArgument(options.effect, error);
  if (!component) return report(exitWrongArguments, error);
  const EffectInstance effect = openEffect(component);
  if (!effect) return report(exitFailed, options.effect + ": the effect cannot be opened");
  if (!applySetOption(effect.get(), options.settings, error)) return report(exitWrongArguments, error);
  std::error_code noSuchFile;
  if (fs::equivalent(options.in, options.out, noSuchFile))
    return report(exitWrongArguments, "OUT: " + options.out + " is the same file as IN; expected another");

  SndfileHandle in(options.in);
  if (in.error()) return report(exitFailed, options.in + ": " + in.strError());
  if (in.channels() > static_cast<int>(kAudioMaximumChannels))
    return report(exitFailed,
                  options.in + ": it has " + std::to_string(in.channels()) + " channels; expected 1 or 2");
  const auto channels = static_cast<UInt32>(in.channels());
  const RenderFormat format{static_cast<Float64>(in.samplerate()), channels, channels, blockFrames};
  const auto runner = EffectRunner::make(effect.get(), format, error);
  if (!runner) return report(exitFailed, options.in + ": " + error);

  {
    SndfileHandle out(options.out, SFM_WRITE, in.format(), in.channels(), in.samplerate());
    if (out.error()) return report(exitFailed, options.out + ": " + out.strError());
    out.command(SFC_SET_CLIPPING, nullptr, SF_TRUE);  // too loud is flattened, not wrapped round
    error = convert(in, out, *runner, options);
  }
  if (error.empty()) return exitOk;
  if (fs::is_regular_file(options.out, noSuchFile)) fs::remove(options.out, noSuchFile);
  return report(exitFailed, error);
}

}  // namespace

Command processCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand(
      "process",
      "Send an audio file through an effect. The output has the input's format and length; the effect's "
      "latency is taken out.");
  const auto options = std::make_shared<Options>();
  app->add_option("EFFECT", options->effect, effectArgumentHelp)->required();
  app->add_option("IN", options->in, "the file to read, with one or two channels")->required();
  app->add_option("OUT", options->out, "the file to write; what it held is lost")->required();
  addSetOption(*app, options->settings);
  return {app, [options] { return run(*options); }};
}
