#pragma once

#include "AudioUnit.h"
#include "CoreFoundation.h"

/// Identifiers and records of the properties that effects have. In brackets: the type of the value, and
/// `set` where it can be written. Scope global and element 0 unless said otherwise.
enum AudioUnitPropertyIDs : AudioUnitPropertyID {
  kAudioUnitProperty_SampleRate = 2,              // [Float64, set before initialisation] of both formats
  kAudioUnitProperty_ParameterList = 3,           // [UInt32 each] identifiers, ascending
  kAudioUnitProperty_ParameterInfo = 4,           // [AudioUnitParameterInfo] element: the parameter
  kAudioUnitProperty_StreamFormat = 8,            // [AudioStreamBasicDescription, set before initialisation]
                                                  // scope input or output
  kAudioUnitProperty_InPlaceProcessing = 11,      // [UInt32] always 1
  kAudioUnitProperty_Latency = 12,                // [Float64] seconds that a host should compensate
  kAudioUnitProperty_MaximumFramesPerSlice = 14,  // [UInt32, set before initialisation] of one render
  kAudioUnitProperty_ParameterValueStrings = 16,  // [CFArrayRef] names of an indexed parameter's values;
                                                  // element: the parameter
  kAudioUnitProperty_TailTime = 20,               // [Float64] seconds that go on after the input fell silent
  kAudioUnitProperty_SetRenderCallback = 23,      // [AURenderCallbackStruct, set] scope input; not while a
                                                  // render runs
  kAudioUnitProperty_FactoryPresets = 24,         // [CFArrayRef] names; a preset's number is its index
  kAudioUnitProperty_RenderQuality = 26,          // [UInt32, set] 0 to 127; only effects that have a choice
  kAudioUnitProperty_HostCallbacks = 27,          // [HostCallbackInfo, set]
  kAudioUnitProperty_CurrentPreset = 28,          // [AUPreset, set] older name of PresentPreset
  kAudioUnitProperty_ParameterStringFromValue = 33,  // [AudioUnitParameterStringFromValue] element: the
                                                     // parameter
  kAudioUnitProperty_PresentPreset = 36,             // [AUPreset, set]
};

inline constexpr UInt32 kRenderQuality_Max = 127;
inline constexpr UInt32 kRenderQuality_High = 96;
inline constexpr UInt32 kRenderQuality_Medium = 64;
inline constexpr UInt32 kRenderQuality_Low = 32;
inline constexpr UInt32 kRenderQuality_Min = 0;

enum AudioUnitParameterUnit : UInt32 {
  kAudioUnitParameterUnit_Generic = 0,
  kAudioUnitParameterUnit_Indexed = 1,
  kAudioUnitParameterUnit_Boolean = 2,
  kAudioUnitParameterUnit_Percent = 3,
  kAudioUnitParameterUnit_Seconds = 4,
  kAudioUnitParameterUnit_SampleFrames = 5,
  kAudioUnitParameterUnit_Phase = 6,
  kAudioUnitParameterUnit_Rate = 7,
  kAudioUnitParameterUnit_Hertz = 8,
  kAudioUnitParameterUnit_Cents = 9,
  kAudioUnitParameterUnit_Decibels = 13,
  kAudioUnitParameterUnit_EqualPowerCrossfade = 16,
  kAudioUnitParameterUnit_Octaves = 21,
  kAudioUnitParameterUnit_Milliseconds = 24,
};

inline constexpr UInt32 kAudioUnitParameterFlag_CFNameRelease = 1u << 4;  // who reads releases the name
inline constexpr UInt32 kAudioUnitParameterFlag_DisplayMask = 7u << 16;
inline constexpr UInt32 kAudioUnitParameterFlag_DisplaySquareRoot = 1u << 16;
inline constexpr UInt32 kAudioUnitParameterFlag_DisplaySquared = 2u << 16;
inline constexpr UInt32 kAudioUnitParameterFlag_DisplayExponential = 5u << 16;
inline constexpr UInt32 kAudioUnitParameterFlag_ValuesHaveStrings = 1u << 21;  // property 33 is meant
inline constexpr UInt32 kAudioUnitParameterFlag_DisplayLogarithmic = 1u << 22;
inline constexpr UInt32 kAudioUnitParameterFlag_HasCFNameString = 1u << 27;
inline constexpr UInt32 kAudioUnitParameterFlag_IsReadable = 1u << 30;
inline constexpr UInt32 kAudioUnitParameterFlag_IsWritable = 1u << 31;

struct AudioUnitParameterInfo {
  char name[52] = {};                  // Mac Roman, ended by 0
  CFStringRef unitName = nullptr;      // null: the unit code says it
  UInt32 clumpID = 0;                  // 0: belongs to no group
  CFStringRef cfNameString = nullptr;  // with flag bit 27; the effect's own unless bit 4 is set too
  UInt32 unit = kAudioUnitParameterUnit_Generic;
  Float32 minValue = 0;
  Float32 maxValue = 0;
  Float32 defaultValue = 0;
  UInt32 flags = 0;
};
static_assert(sizeof(AudioUnitParameterInfo) == 104);

/// Request and answer of property 33. The string belongs to whoever asked.
struct AudioUnitParameterStringFromValue {
  AudioUnitParameterID inParamID = 0;
  const Float32* inValue = nullptr;  // null: the current value
  CFStringRef outString = nullptr;
};
static_assert(sizeof(AudioUnitParameterStringFromValue) == 24);

/// Numbers from 0 are factory presets; a negative number is a user's setting that has only a name. Who
/// reads it releases the name; who writes it keeps its own. The name of a factory preset is not looked at
/// when it is chosen.
struct AUPreset {
  SInt32 presetNumber = -1;
  CFStringRef presetName = nullptr;
};

/// What a host tells an effect's view about its time line. Null functions: the host does not say. Outputs
/// that are not wanted may be null; a status other than 0 means that no output was touched.
struct HostCallbackInfo {
  void* hostUserData = nullptr;
  OSStatus (*beatAndTempoProc)(void* userData, Float64* currentBeat, Float64* currentTempo) = nullptr;
  OSStatus (*musicalTimeLocationProc)(void* userData, UInt32* deltaSampleOffsetToNextBeat,
                                      Float32* timeSigNumerator, UInt32* timeSigDenominator,
                                      Float64* currentMeasureDownBeat) = nullptr;
  OSStatus (*transportStateProc)(void* userData, Boolean* isPlaying, Boolean* transportStateChanged,
                                 Float64* currentSampleInTimeLine, Boolean* isCycling,
                                 Float64* cycleStartBeat, Float64* cycleEndBeat) = nullptr;
  friend bool operator==(const HostCallbackInfo&, const HostCallbackInfo&) = default;
};
