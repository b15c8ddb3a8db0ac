#include "EffectPlugin.h"

#include <lv2/core/lv2_util.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "AUFlushDenormals.h"
#include "AudioUnitProperties.h"
#include "PluginKinds.h"

namespace {

constexpr UInt32 longestPart = 1024;  // frames
constexpr Float32 notYet = std::numeric_limits<Float32>::quiet_NaN();

template <class T>
bool set(AudioUnit unit, AudioUnitPropertyID id, AudioUnitScope scope, const T& value) {
  return AudioUnitSetProperty(unit, id, scope, 0, &value, sizeof value) == noErr;
}

const PluginKind* kindOf(AudioUnit unit) {
  ComponentDescription description;
  GetComponentInfo(unit, &description, nullptr, nullptr, nullptr);
  return pluginKind(description.componentSubType);
}

}  // namespace

std::unique_ptr<EffectPlugin> EffectPlugin::make(Component component, double sampleRate,
                                                 const LV2_Feature* const* features) {
  EffectInstance unit = openEffect(component);
  if (!unit || !kindOf(unit.get())) return nullptr;
  auto plugin = std::make_unique<EffectPlugin>(std::move(unit));
  if (!plugin->prepare(sampleRate)) return nullptr;
  if (plugin->timePort_) {
    const auto* map = static_cast<const LV2_URID_Map*>(lv2_features_data(features, LV2_URID__map));
    if (!map) return nullptr;
    plugin->tempoInput_.emplace(*map);
  }
  return plugin;
}

EffectPlugin::EffectPlugin(EffectInstance unit)
    : unit_(std::move(unit)),
      ports_(unit_.get()),
      isHardRealTime_(kindOf(unit_.get())->isHardRealTime),
      data_(ports_.size()),
      latencyPort_(ports_.find(PluginPort::latency)),
      timePort_(ports_.find(PluginPort::timePosition)),
      tempoPort_(ports_.find(PluginPort::tempo)) {
  for (uint32_t i = 0; i < ports_.size(); ++i) {
    const PluginPort& port = ports_[i];
    if (port.role == PluginPort::parameter || port.role == PluginPort::renderQuality)
      inputs_.push_back({i, port.role, port.parameterID, notYet});
    if (port.role == PluginPort::meter) meters_.push_back({i, port.parameterID});
  }
}

bool EffectPlugin::prepare(double sampleRate) {
  AudioUnit unit = unit_.get();
  if (!set(unit, kAudioUnitProperty_SampleRate, kAudioUnitScope_Global, Float64{sampleRate}) ||
      !set(unit, kAudioUnitProperty_MaximumFramesPerSlice, kAudioUnitScope_Global, longestPart) ||
      !set(unit, kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input,
           AURenderCallbackStruct{&supply, this}) ||
      AudioUnitInitialize(unit) != noErr)
    return false;
  latency_ = latencyFrames(sampleRate);
  bypass_.prepare(sampleRate, latency_, longestPart);
  return true;
}

uint32_t EffectPlugin::latencyFrames(double sampleRate) const {
  Float64 seconds = 0;
  UInt32 size = sizeof seconds;
  AudioUnitGetProperty(unit_.get(), kAudioUnitProperty_Latency, kAudioUnitScope_Global, 0, &seconds, &size);
  return static_cast<uint32_t>(std::lround(seconds * sampleRate));
}

void EffectPlugin::connectPort(uint32_t port, void* data) {
  if (port < data_.size()) data_[port] = data;
}

void EffectPlugin::activate() {
  AudioUnitReset(unit_.get(), kAudioUnitScope_Global, 0);
  sampleTime_ = 0;
  tempo_ = 0;
  isFresh_ = true;
}

void EffectPlugin::run(uint32_t frames) {
  const AUFlushDenormals flush;
  readInputs();
  if (frames > 0 && isFresh_) begin();
  for (uint32_t start = 0; start < frames; start += longestPart)
    renderPart(start, std::min(longestPart, frames - start));
  writeOutputs();
}

void EffectPlugin::readInputs() {
  for (Input& input : inputs_) {
    const Float32* value = port(input.port);
    if (value && *value != input.last && !std::isnan(*value)) takeInput(input, *value);
  }
  if (tempoInput_ && data_[*timePort_])
    tempo_ = tempoInput_->read(*static_cast<const LV2_Atom_Sequence*>(data_[*timePort_]), tempo_);
}

void EffectPlugin::takeInput(Input& input, Float32 value) {
  input.last = value;
  if (input.role == PluginPort::renderQuality) {
    const Float32 quality = std::clamp<Float32>(value, kRenderQuality_Min, kRenderQuality_Max);
    set(unit_.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global,
        static_cast<UInt32>(std::lround(quality)));
  } else {
    AudioUnitSetParameter(unit_.get(), input.parameter, kAudioUnitScope_Global, 0, value, 0);
  }
}

// Ports say nothing before the first run, and what they say then is no change that would have to be smoothed.
void EffectPlugin::begin() {
  if (isHardRealTime_) AudioUnitReset(unit_.get(), kAudioUnitScope_Global, 0);
  bypass_.clear(isEnabled());
  isFresh_ = false;
}

void EffectPlugin::renderPart(uint32_t start, uint32_t frames) {
  float* const output[] = {port(PluginPort::outLeft) + start, port(PluginPort::outRight) + start};
  source_[0] = port(PluginPort::inLeft) + start;
  source_[1] = port(PluginPort::inRight) + start;
  bypass_.takeInput(source_, frames, isEnabled());
  AudioBufferList list;
  list.mNumberBuffers = 2;
  for (size_t c = 0; c < 2; ++c) list.mBuffers[c] = {1, frames * UInt32{sizeof(float)}, output[c]};
  const AudioTimeStamp time{sampleTime_, 0, kAudioTimeStampSampleTimeValid};
  UInt32 flags = 0;
  AudioUnitRender(unit_.get(), &flags, &time, 0, frames, &list);
  sampleTime_ += frames;
  bypass_.finish(output, frames);
}

OSStatus EffectPlugin::supply(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                              AudioBufferList* data) {
  const auto* plugin = static_cast<const EffectPlugin*>(self);
  for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
    data->mBuffers[c].mData = const_cast<float*>(plugin->source_[c]);  // only read
  return noErr;
}

void EffectPlugin::writeOutputs() {
  const auto write = [this](std::optional<uint32_t> index, float value) {
    if (index && port(*index)) *port(*index) = value;
  };
  for (const Meter& meter : meters_) {
    Float32 value = 0;
    AudioUnitGetParameter(unit_.get(), meter.parameter, kAudioUnitScope_Global, 0, &value);
    write(meter.port, value);
  }
  write(latencyPort_, static_cast<float>(latency_));
  write(tempoPort_, tempo_);
}
