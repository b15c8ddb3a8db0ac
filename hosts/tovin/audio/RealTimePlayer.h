#pragma once

#include <memory>
#include <string>
#include <thread>

class EffectRunner;
class RtAudio;
class SignalSource;

/// Plays a signal through an effect as time passes: on the sound card where there is one, otherwise
/// unheard, at the same pace, so that meters and curves live all the same. Runner and source are not
/// owned, must outlive the player and belong to it while it plays. Main thread.
class RealTimePlayer {
 public:
  RealTimePlayer(EffectRunner& runner, SignalSource& source);
  ~RealTimePlayer();
  RealTimePlayer(const RealTimePlayer&) = delete;
  RealTimePlayer& operator=(const RealTimePlayer&) = delete;

  /// Again while it plays does nothing.
  void start();
  /// On return no audio thread touches runner and source any more.
  void stop();
  bool isPlaying() const { return device_ || clock_.joinable(); }

  /// The device's name, or that there is none.
  const std::string& outputName() const { return outputName_; }

 private:
  bool startDevice();
  void startClock();
  void fill(float* const* output, unsigned frames);
  static int deviceCallback(void* output, void* input, unsigned frames, double streamTime, unsigned status,
                            void* self);

  EffectRunner& runner_;
  SignalSource& source_;
  std::unique_ptr<RtAudio> device_;
  std::jthread clock_;
  std::string outputName_;
};
