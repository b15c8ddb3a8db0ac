#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CoreAudioTypes.h"

inline constexpr const char* signalSourceHelp =
    "what the effect hears: an audio file, or \"tone\" (1 kHz at -12 dBFS), \"noise\", \"drums\"";

/// An endless stereo signal: a loop that is kept in memory, so that reading it takes no lock, allocation or
/// system call. The same name and rate give the same samples.
class SignalSource {
 public:
  /// `text`: "tone", "noise", "drums" or the name of a file with one or two channels at that rate. Nothing,
  /// with a message that names what is wrong, when the file cannot be used.
  static std::optional<SignalSource> named(const std::string& text, Float64 sampleRate, std::string& error);

  /// The next frames, from the loop's start when it has ended. Only `channels` (1 or 2) pointers are looked
  /// at; one channel is the left one.
  void read(float* const* into, UInt32 channels, UInt32 frames);
  void rewind() { position_ = 0; }

  size_t loopFrames() const { return channels_[0].size(); }

 private:
  SignalSource(std::vector<float> left, std::vector<float> right);
  static std::optional<SignalSource> fromFile(const std::string& path, Float64 sampleRate,
                                              std::string& error);

  std::vector<float> channels_[2];
  size_t position_ = 0;
};
