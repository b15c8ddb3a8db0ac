#include "PortMirror.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "AudioUnitProperties.h"

namespace {

constexpr uint32_t floatProtocol = 0;

AudioUnitParameter address(AudioUnit effect, const PluginPort& port) {
  return {effect, port.parameterID, kAudioUnitScope_Global, 0};
}

}  // namespace

PortMirror::PortMirror(AudioUnit effect, const PluginPorts& ports, const EditorHost& host)
    : effect_(effect), ports_(ports), host_(host) {
  AUEventListenerCreate(&dispatch, this, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode, 0, 0, &listener_);
  for (const PluginPort& port : ports.all()) {
    known_.push_back(effectValue(port));
    if (port.role == PluginPort::parameter)
      listen(AudioUnitEvent::parameterChange(address(effect, port)));
    else if (port.role == PluginPort::renderQuality)
      listen(AudioUnitEvent::propertyChange(
          {effect, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0}));
  }
}

PortMirror::~PortMirror() {
  AUListenerDispose(listener_);
  settle(false);
}

void PortMirror::listen(const AudioUnitEvent& event) {
  AUEventListenerAddEventType(listener_, this, &event);
}

float PortMirror::effectValue(const PluginPort& port) const {
  Float32 value = 0;
  if (port.role == PluginPort::parameter) {
    AudioUnitGetParameter(effect_, port.parameterID, kAudioUnitScope_Global, 0, &value);
  } else if (port.role == PluginPort::renderQuality) {
    UInt32 quality = 0, size = sizeof quality;
    AudioUnitGetProperty(effect_, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                         &size);
    value = static_cast<Float32>(quality);
  }
  return value;
}

void PortMirror::hostSet(uint32_t index, float value) {
  if (index >= ports_.size() || touched_.contains(index) || !std::isfinite(value)) return;
  const PluginPort& port = ports_[index];
  switch (port.role) {
    case PluginPort::parameter: {
      const AudioUnitParameter parameter = address(effect_, port);
      AUParameterSet(listener_, this, &parameter, value, 0);
      known_[index] = effectValue(port);
      break;
    }
    case PluginPort::renderQuality: {
      const auto quality = static_cast<UInt32>(std::clamp(value, port.minimum, port.maximum));
      known_[index] = static_cast<float>(quality);  // before the notice, which is about to come
      AudioUnitSetProperty(effect_, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                           sizeof quality);
      break;
    }
    case PluginPort::meter:
      effect_->setMeter(port.parameterID, value);
      break;
    case PluginPort::tempo:
      if (value < slowestTempo || value > fastestTempo) break;  // 0: not known yet
      if (tempo_)
        tempo_->setTempo(value);
      else
        tempo_ = std::make_unique<HostTempo>(effect_, value);
      break;
    default:
      break;
  }
}

void PortMirror::dispatch(void* self, void*, const AudioUnitEvent* event, UInt64, Float32) {
  auto& mirror = *static_cast<PortMirror*>(self);
  const auto port = event->mEventType == kAudioUnitEvent_PropertyChange
                        ? mirror.ports_.find(PluginPort::renderQuality)
                        : mirror.ports_.findParameter(event->mArgument.mParameter.mParameterID);
  if (port) mirror.tellHost(*port);
}

void PortMirror::tellHost(uint32_t index) {
  const float value = effectValue(ports_[index]);
  if (value == std::exchange(known_[index], value)) return;
  if (touched_.insert(index).second) touch(index, true);
  host_.write(host_.controller, index, sizeof value, floatProtocol, &value);
}

void PortMirror::settle(bool isHeld) {
  if (isHeld) return;
  for (const uint32_t port : std::exchange(touched_, {})) touch(port, false);
}

void PortMirror::touch(uint32_t port, bool held) const {
  if (host_.touch) host_.touch->touch(host_.touch->handle, port, held);
}
