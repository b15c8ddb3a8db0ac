#include "RealTimePlayer.h"

#include <RtAudio.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "EffectRunner.h"
#include "QuietStandardError.h"
#include "SignalSource.h"

namespace {

constexpr unsigned blockFrames = 512;

void ignoreError(RtAudioError::Type, const std::string&) {}

}  // namespace

RealTimePlayer::RealTimePlayer(EffectRunner& runner, SignalSource& source)
    : runner_(runner), source_(source) {}

RealTimePlayer::~RealTimePlayer() {
  stop();
}

void RealTimePlayer::start() {
  if (isPlaying()) return;
  if (!startDevice()) startClock();
}

void RealTimePlayer::stop() {
  if (device_) {
    const QuietStandardError quiet;
    try {
      if (device_->isStreamRunning()) device_->abortStream();
    } catch (const RtAudioError&) {
      // The device went away: closing is all that is left to do.
    }
    device_->closeStream();
    device_ = nullptr;
  }
  clock_ = {};
}

bool RealTimePlayer::startDevice() {
  const QuietStandardError quiet;  // the drivers below report a missing device there, at length
  try {
    auto device = std::make_unique<RtAudio>();
    device->showWarnings(false);
    if (device->getDeviceCount() == 0) return false;
    RtAudio::StreamParameters output;
    output.deviceId = device->getDefaultOutputDevice();
    output.nChannels = runner_.format().outputs;
    const std::string name = device->getDeviceInfo(output.deviceId).name;
    RtAudio::StreamOptions options;
    options.flags = RTAUDIO_NONINTERLEAVED;
    options.streamName = "tovin";
    unsigned frames = blockFrames;
    device->openStream(&output, nullptr, RTAUDIO_FLOAT32, static_cast<unsigned>(runner_.format().sampleRate),
                       &frames, &deviceCallback, this, &options, &ignoreError);
    if (!device->isStreamOpen()) return false;
    device->startStream();
    if (!device->isStreamRunning()) return false;
    device_ = std::move(device);
    outputName_ = name;
    return true;
  } catch (const RtAudioError&) {
    return false;
  }
}

void RealTimePlayer::startClock() {
  outputName_ = "no sound device";
  clock_ = std::jthread([this](std::stop_token stop) {
    using Clock = std::chrono::steady_clock;
    const auto blockTime = std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(blockFrames / runner_.format().sampleRate));
    std::vector<float> memory(blockFrames * kAudioMaximumChannels);
    float* const channels[kAudioMaximumChannels] = {memory.data(), memory.data() + blockFrames};
    std::mutex mutex;
    std::condition_variable_any wait;
    auto due = Clock::now();
    while (!stop.stop_requested()) {
      fill(channels, blockFrames);
      // A machine that slept goes on from now; it does not catch up.
      due = std::max(due + blockTime, Clock::now() - blockTime);
      std::unique_lock lock(mutex);
      wait.wait_until(lock, stop, due, [] { return false; });
    }
  });
}

void RealTimePlayer::fill(float* const* output, unsigned frames) {
  if (runner_.pull(source_, output, frames) == noErr) return;
  for (UInt32 c = 0; c < runner_.format().outputs; ++c) std::fill_n(output[c], frames, 0.0f);
}

int RealTimePlayer::deviceCallback(void* output, void*, unsigned frames, double, unsigned, void* self) {
  auto* samples = static_cast<float*>(output);
  float* const channels[kAudioMaximumChannels] = {samples, samples + frames};
  static_cast<RealTimePlayer*>(self)->fill(channels, frames);
  return 0;
}
