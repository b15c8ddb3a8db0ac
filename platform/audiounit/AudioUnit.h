#pragma once

#include "Components.h"
#include "CoreAudioTypes.h"

/// One opened effect. It is made by OpenAComponent and belongs to whoever opened it.
using AudioUnit = ComponentInstance;

using AudioUnitParameterID = UInt32;
using AudioUnitPropertyID = UInt32;
using AudioUnitScope = UInt32;
using AudioUnitElement = UInt32;

inline constexpr AudioUnitScope kAudioUnitScope_Global = 0;
inline constexpr AudioUnitScope kAudioUnitScope_Input = 1;
inline constexpr AudioUnitScope kAudioUnitScope_Output = 2;

inline constexpr OSStatus kAudioUnitErr_InvalidProperty = -10879;
inline constexpr OSStatus kAudioUnitErr_InvalidParameter = -10878;
inline constexpr OSStatus kAudioUnitErr_InvalidElement = -10877;
inline constexpr OSStatus kAudioUnitErr_NoConnection = -10876;
inline constexpr OSStatus kAudioUnitErr_FailedInitialization = -10875;
inline constexpr OSStatus kAudioUnitErr_TooManyFramesToProcess = -10874;
inline constexpr OSStatus kAudioUnitErr_FormatNotSupported = -10868;
inline constexpr OSStatus kAudioUnitErr_Uninitialized = -10867;
inline constexpr OSStatus kAudioUnitErr_InvalidScope = -10866;
inline constexpr OSStatus kAudioUnitErr_PropertyNotWritable = -10865;
inline constexpr OSStatus kAudioUnitErr_InvalidPropertyValue = -10851;
inline constexpr OSStatus kAudioUnitErr_Initialized = -10849;

/// Where a parameter or a property is. The global scope's only element is 0.
struct AudioUnitParameter {
  AudioUnit mAudioUnit = nullptr;
  AudioUnitParameterID mParameterID = 0;
  AudioUnitScope mScope = kAudioUnitScope_Global;
  AudioUnitElement mElement = 0;
};
struct AudioUnitProperty {
  AudioUnit mAudioUnit = nullptr;
  AudioUnitPropertyID mPropertyID = 0;
  AudioUnitScope mScope = kAudioUnitScope_Global;
  AudioUnitElement mElement = 0;
};

/// Supplies an effect's input. The list's buffers have room for `frames` floats each: fill them, or point
/// mData at samples of your own, which must stay until the render returns. Any status but 0 ends the
/// render with that status. Called on the thread that renders.
using AURenderCallback = OSStatus (*)(void* refCon, UInt32* actionFlags, const AudioTimeStamp* timeStamp,
                                      UInt32 bus, UInt32 frames, AudioBufferList* data);
struct AURenderCallbackStruct {
  AURenderCallback inputProc = nullptr;
  void* inputProcRefCon = nullptr;
  friend bool operator==(const AURenderCallbackStruct&, const AURenderCallbackStruct&) = default;
};

// The functions of an instance. Each answers paramErr for a null instance and badComponentInstance for one
// that is closed, and belongs to the main thread unless it says otherwise. Those that change what a render
// uses (initialise, uninitialise, reset, properties that are set before initialisation, the render callback)
// must not run beside a render of the same instance.

/// Makes it ready to render; every smoothed value stands at its target, every history is empty. Again
/// without uninitialising first does nothing. FormatNotSupported when the effect cannot work between the
/// channels of its two formats.
OSStatus AudioUnitInitialize(AudioUnit unit);
OSStatus AudioUnitUninitialize(AudioUnit unit);
/// As AudioUnitInitialize leaves it; values set before are in force in the first frame after. Global
/// scope, element 0.
OSStatus AudioUnitReset(AudioUnit unit, AudioUnitScope scope, AudioUnitElement element);

/// Size in bytes and whether it can be written; either output may be null.
OSStatus AudioUnitGetPropertyInfo(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                                  AudioUnitElement element, UInt32* dataSize, Boolean* writable);
/// `ioSize`: bytes that there is room for, then bytes written. A buffer that is too small is an error
/// (InvalidPropertyValue) and nothing is written. Strings and lists belong to the caller.
OSStatus AudioUnitGetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, void* data, UInt32* ioSize);
/// Listeners of that property hear of it, unless the value is the one that it has already.
OSStatus AudioUnitSetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, const void* data, UInt32 size);

/// Any thread. An identifier that does not exist is InvalidParameter.
OSStatus AudioUnitGetParameter(AudioUnit unit, AudioUnitParameterID parameter, AudioUnitScope scope,
                               AudioUnitElement element, Float32* value);
/// Any thread; tells nobody (AUParameterSet does). Clamps to the range; not-a-number is
/// InvalidPropertyValue, a read-only parameter PropertyNotWritable.
OSStatus AudioUnitSetParameter(AudioUnit unit, AudioUnitParameterID parameter, AudioUnitScope scope,
                               AudioUnitElement element, Float32 value, UInt32 bufferOffsetInFrames);

/// Renders `frames` frames (0 is allowed) of bus 0 on the calling thread, without lock, allocation or
/// system call. Buffers of `data` whose mData is null are pointed at memory of the effect, good until its
/// next render. Input and all outputs may be one memory; of two outputs in one memory the last channel
/// remains.
OSStatus AudioUnitRender(AudioUnit unit, UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 bus,
                         UInt32 frames, AudioBufferList* data);
