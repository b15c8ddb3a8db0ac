#include "AUUnitText.h"

#include "AudioUnitProperties.h"

std::string AUUnitText(UInt32 unit) {
  switch (unit) {
    case kAudioUnitParameterUnit_Percent:
    case kAudioUnitParameterUnit_EqualPowerCrossfade:
      return "%";
    case kAudioUnitParameterUnit_Seconds:
      return "s";
    case kAudioUnitParameterUnit_SampleFrames:
      return "samples";
    case kAudioUnitParameterUnit_Phase:
      return "degrees";
    case kAudioUnitParameterUnit_Rate:
      return "x";
    case kAudioUnitParameterUnit_Hertz:
      return "Hz";
    case kAudioUnitParameterUnit_Cents:
      return "cents";
    case kAudioUnitParameterUnit_Decibels:
      return "dB";
    case kAudioUnitParameterUnit_Octaves:
      return "octaves";
    case kAudioUnitParameterUnit_Milliseconds:
      return "ms";
    default:
      return {};
  }
}
