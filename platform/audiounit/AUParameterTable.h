#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <span>
#include <string>

#include "AudioUnitProperties.h"

/// Usual flags of a parameter: it has a name, can be read and written.
inline constexpr UInt32 kAUParameterPlain = kAudioUnitParameterFlag_HasCFNameString |
                                            kAudioUnitParameterFlag_IsReadable |
                                            kAudioUnitParameterFlag_IsWritable;
inline constexpr UInt32 kAUParameterLogarithmic =
    kAUParameterPlain | kAudioUnitParameterFlag_DisplayLogarithmic;
/// One that the effect writes and everybody else only reads.
inline constexpr UInt32 kAUParameterMeter =
    kAudioUnitParameterFlag_HasCFNameString | kAudioUnitParameterFlag_IsReadable;

/// One parameter, as a row of an effect's constexpr table. The flags are handed out as they stand here:
/// without HasCFNameString the description has the C name only, with CFNameRelease who reads it releases.
struct AUParameterRow {
  AudioUnitParameterID id;
  const char* name;  // UTF-8 with Mac Roman characters, at most 51 of them
  UInt32 unit;
  Float32 minValue;
  Float32 maxValue;
  Float32 defaultValue;
  UInt32 flags = kAUParameterPlain;
  std::span<const char* const> valueNames = {};  // of an indexed parameter, from minValue upwards
};

/// One factory preset: a name and the parameters that are not at their defaults.
struct AUPresetRow {
  struct Value {
    AudioUnitParameterID id = none;
    Float32 value = 0;
  };
  static constexpr AudioUnitParameterID none = ~AudioUnitParameterID{0};

  const char* name;
  std::array<Value, 24> values = {};  // entries with the identifier `none` are unused
};

/// The parameters of one instance: the rows, which are not copied, and a value for each.
/// Values may be read and written from any thread, without lock; the rest is the main thread's.
class AUParameterTable {
 public:
  /// Rows in ascending order of their identifiers. Values start at the defaults.
  explicit AUParameterTable(std::span<const AUParameterRow> rows);

  std::span<const AUParameterRow> rows() const { return rows_; }
  static constexpr size_t notFound = ~size_t{0};
  size_t indexOf(AudioUnitParameterID id) const;

  Float32 valueAt(size_t index) const { return values_[index].load(std::memory_order_relaxed); }
  /// As it is: for values that were checked, and for meters.
  void setValueAt(size_t index, Float32 value) { values_[index].store(value, std::memory_order_relaxed); }
  Float32 clamped(size_t index, Float32 value) const;

  AudioUnitParameterInfo infoAt(size_t index) const;
  /// Null when the values have no names.
  CFArrayRef valueStringsAt(size_t index) const;
  /// The value's name where there is one, else number and unit, as in "-6.5 dB".
  std::string textOfValue(size_t index, Float32 value) const;

  /// Every parameter that can be written takes the preset's value or its default. True when one changed.
  bool choose(const AUPresetRow& preset);

 private:
  struct Release {
    void operator()(CFStringRef string) const { CFRelease(string); }
  };
  using Name = std::unique_ptr<const CFStringObject, Release>;

  std::span<const AUParameterRow> rows_;
  std::unique_ptr<std::atomic<Float32>[]> values_;
  std::vector<Name> names_;
};
