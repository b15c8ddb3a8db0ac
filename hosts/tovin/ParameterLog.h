#pragma once

#include <map>

#include "AUEventListener.h"

/// Follows all parameters of an effect as a host does, and, when it is told to print, writes each change,
/// from whatever source, as `ID VALUE` to standard output. Main thread.
class ParameterLog {
 public:
  /// The effect must be open as long as this lives.
  ParameterLog(AudioUnit unit, bool prints);
  ~ParameterLog();
  ParameterLog(const ParameterLog&) = delete;
  ParameterLog& operator=(const ParameterLog&) = delete;

  /// Announces every parameter to whoever listens, as a host does once a view is open.
  void announceAll() const;

 private:
  static void dispatch(void* userData, void* object, const AudioUnitEvent* event, UInt64 hostTime,
                       Float32 value);
  void changed(AudioUnitParameterID id, Float32 value);

  AudioUnit unit_;
  bool prints_;
  AUEventListenerRef listener_ = nullptr;
  std::map<AudioUnitParameterID, Float32> values_;  // as printed last
};
