#pragma once

#include <lv2/core/lv2.h>

#include <memory>
#include <optional>
#include <vector>

#include "BypassFade.h"
#include "EffectInstance.h"
#include "PluginPorts.h"
#include "TempoInput.h"

/// One effect between the ports of a plug-in. Control ports are compared with what they said last, and a
/// change is set on the effect, which smooths it. A block is rendered in parts where it is longer than an
/// effect takes at once.
class EffectPlugin {
 public:
  /// Null when the effect does not work at that rate or the host lacks a feature that it needs.
  static std::unique_ptr<EffectPlugin> make(Component component, double sampleRate,
                                            const LV2_Feature* const* features);
  /// For make alone.
  explicit EffectPlugin(EffectInstance unit);

  // As the functions of LV2_Descriptor say.
  void connectPort(uint32_t port, void* data);
  void activate();
  /// No lock, allocation or system call, except for what the effect's kind says.
  void run(uint32_t frames);

 private:
  struct Input {
    uint32_t port;
    PluginPort::Role role;
    AudioUnitParameterID parameter;
    Float32 last;
  };
  struct Meter {
    uint32_t port;
    AudioUnitParameterID parameter;
  };

  bool prepare(double sampleRate);
  uint32_t latencyFrames(double sampleRate) const;
  float* port(size_t index) const { return static_cast<float*>(data_[index]); }
  bool isEnabled() const { return !port(PluginPort::enabled) || *port(PluginPort::enabled) > 0; }
  void readInputs();
  void takeInput(Input& input, Float32 value);
  void begin();
  void renderPart(uint32_t start, uint32_t frames);
  static OSStatus supply(void* self, UInt32* flags, const AudioTimeStamp* time, UInt32 bus, UInt32 frames,
                         AudioBufferList* data);
  void writeOutputs();

  const EffectInstance unit_;
  const PluginPorts ports_;
  const bool isHardRealTime_;
  std::vector<void*> data_;  // what each port is connected to
  std::vector<Input> inputs_;
  std::vector<Meter> meters_;
  BypassFade bypass_;
  uint32_t latency_ = 0;
  bool isFresh_ = true;          // nothing has been rendered since it was activated
  const float* source_[2] = {};  // of the part that is rendered
  Float64 sampleTime_ = 0;

  std::optional<TempoInput> tempoInput_;
  std::optional<uint32_t> latencyPort_, timePort_, tempoPort_;
  float tempo_ = 0;
};
