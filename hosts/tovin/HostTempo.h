#pragma once

#include "AudioUnit.h"

/// A time line that runs at a steady tempo from the moment it is made, told to an effect as its host's.
class HostTempo {
 public:
  /// The effect must be open as long as this lives. `beatsPerMinute` > 0.
  HostTempo(AudioUnit unit, double beatsPerMinute);
  ~HostTempo();
  HostTempo(const HostTempo&) = delete;
  HostTempo& operator=(const HostTempo&) = delete;

 private:
  static OSStatus beatAndTempo(void* self, Float64* beat, Float64* tempo);

  AudioUnit unit_;
  double beatsPerMinute_;
  double start_;
};
