#include "TestUnit.h"

namespace {

constexpr const char* modes[] = {"soft", "hard", "off"};
constexpr UInt32 unnamed = kAudioUnitParameterFlag_IsReadable | kAudioUnitParameterFlag_IsWritable;
constexpr AUParameterRow testParameters[] = {
    {gainParameter, "gain", kAudioUnitParameterUnit_Generic, 0, 10, 2},
    {freqParameter, "größe", kAudioUnitParameterUnit_Hertz, 20, 20000, 200,
     unnamed | kAudioUnitParameterFlag_DisplayLogarithmic},
    {framesParameter, "frames", kAudioUnitParameterUnit_SampleFrames, 0, 44100, 0},
    {modeParameter, "mode", kAudioUnitParameterUnit_Indexed, 0, 2, 0,
     kAUParameterPlain | kAudioUnitParameterFlag_ValuesHaveStrings, modes},
    {givenParameter, "given away", kAudioUnitParameterUnit_Decibels, -12, 12, 0,
     kAUParameterPlain | kAudioUnitParameterFlag_CFNameRelease},
    {textParameter, "text", kAudioUnitParameterUnit_Milliseconds, 0, 1000, 5,
     kAUParameterPlain | kAudioUnitParameterFlag_ValuesHaveStrings},
};
constexpr AUPresetRow presets[] = {{"Plain"}, {"Loud", {{{gainParameter, 9}}}}};

}  // namespace

Unit openUnit(Component component) {
  AudioUnit unit = nullptr;
  OpenAComponent(component, &unit);
  return Unit(unit);
}

Unit openTestUnit() {
  return openUnit(RegisterComponent(
      {FourCharCode("aufx"), FourCharCode("bnch"), FourCharCode("Test")}, "Test: AUBench", 0x00010203,
      +[]() -> std::unique_ptr<AUEffectBase> {
        return std::make_unique<SilentEffect>(testParameters, presets);
      }));
}

AudioUnitParameter addressOf(const Unit& unit, AudioUnitParameterID id) {
  return {unit.get(), id, kAudioUnitScope_Global, 0};
}

Float32 valueOf(const Unit& unit, AudioUnitParameterID id) {
  Float32 value = -1e9f;
  AudioUnitGetParameter(unit.get(), id, kAudioUnitScope_Global, 0, &value);
  return value;
}

void hostSets(const Unit& unit, AudioUnitParameterID id, Float32 value) {
  const AudioUnitParameter address = addressOf(unit, id);
  AUParameterSet(nullptr, nullptr, &address, value, 0);
}
