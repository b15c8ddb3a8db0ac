#pragma once

#include "AudioUnit.h"

inline constexpr double slowestTempo = 1, fastestTempo = 999;  // beats per minute

/// A time line that runs from the moment it is made, told to an effect as its host's.
class HostTempo {
 public:
  /// The effect must be open as long as this lives. `beatsPerMinute` > 0.
  HostTempo(AudioUnit unit, double beatsPerMinute);
  ~HostTempo();
  /// > 0; the beat goes on from where it is.
  void setTempo(double beatsPerMinute);
  HostTempo(const HostTempo&) = delete;
  HostTempo& operator=(const HostTempo&) = delete;

 private:
  double beat() const;
  static OSStatus beatAndTempo(void* self, Float64* beat, Float64* tempo);

  AudioUnit unit_;
  double beatsPerMinute_;
  double start_;  // seconds, when the tempo was last set
  double startBeat_ = 0;
};
