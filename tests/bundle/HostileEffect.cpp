#include "HostileEffect.h"

#include <algorithm>
#include <limits>
#include <map>
#include <stdexcept>
#include <vector>

namespace {

OSType codeOf(const std::string& text) {
  OSType code = 0;
  for (const char c : text) code = code << 8 | static_cast<unsigned char>(c);
  return code;
}

/// The parameters of the real effect, without names of their values.
std::vector<AUParameterRow> rowsOf(OSType code) {
  const ComponentDescription wanted{FourCharCode("aufx"), code, FourCharCode("Tovn")};
  const Unit real = openUnit(FindNextComponent(nullptr, &wanted));
  std::vector<AUParameterRow> rows;
  for (AudioUnitParameterID id = 0; id < 1300; ++id) {
    AudioUnitParameterInfo info;
    UInt32 size = sizeof info;
    if (AudioUnitGetProperty(real.get(), kAudioUnitProperty_ParameterInfo, kAudioUnitScope_Global, id, &info,
                             &size) == noErr)
      rows.push_back({id, "some parameter", info.unit, info.minValue, info.maxValue, info.defaultValue,
                      info.flags & ~UInt32{kAudioUnitParameterFlag_ValuesHaveStrings}});
  }
  return rows;
}

class HostileEffect : public AUEffectBase {
 public:
  explicit HostileEffect(std::span<const AUParameterRow> rows)
      : AUEffectBase({.parameters = rows,
                      .presets = {},
                      .minimumSampleRate = 500,
                      .monoToStereo = true,
                      .hasRenderQuality = true}) {}

  OSStatus propertyInfo(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, UInt32& size,
                        bool& writable) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    const OSStatus status = AUEffectBase::propertyInfo(id, scope, element, size, writable);
    if (id == kAudioUnitProperty_ParameterList && !faults().hasLists) size = 0;
    return status;
  }
  OSStatus getProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, void* data,
                       UInt32& size) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    if (id == kAudioUnitProperty_ParameterList && !faults().hasLists) {
      size = 0;
      return noErr;
    }
    const OSStatus status = AUEffectBase::getProperty(id, scope, element, data, size);
    if (status == noErr && id == kAudioUnitProperty_ParameterInfo)
      widen(*static_cast<AudioUnitParameterInfo*>(data));
    return status;
  }
  OSStatus getParameter(AudioUnitParameterID id, Float32& value) const override {
    return faults().hasLists ? AUEffectBase::getParameter(id, value) : kAudioUnitErr_InvalidParameter;
  }

 private:
  static bool fails() { return faults().reads++ == faults().failingRead; }
  static void widen(AudioUnitParameterInfo& info) {
    const float middle = (info.minValue + info.maxValue) / 2;
    info.minValue = middle + (info.minValue - middle) * faults().widening;
    info.maxValue = middle + (info.maxValue - middle) * faults().widening;
  }
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override {
    if (faults().sound == Faults::Sound::refused) throw std::runtime_error("no sound today");
    if (faults().sound == Faults::Sound::notANumber)
      for (float* channel : channels) std::fill_n(channel, frames, std::numeric_limits<float>::quiet_NaN());
  }
};

const std::vector<AUParameterRow>* current = nullptr;  // a factory gets no argument

std::unique_ptr<AUEffectBase> make() {
  return std::make_unique<HostileEffect>(*current);
}

}  // namespace

Faults& faults() {
  static Faults own;
  return own;
}

Component hostileComponent(const std::string& code) {
  static std::map<std::string, std::vector<AUParameterRow>> known;
  const auto [found, isNew] = known.try_emplace(code);
  if (isNew) found->second = rowsOf(codeOf(code));
  current = &found->second;
  return RegisterComponent({FourCharCode("aufx"), codeOf(code), FourCharCode("appl")}, "Hostile: AUEffect",
                           0x00010600, make);
}
