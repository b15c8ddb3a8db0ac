#include "EffectRunner.h"

#include <algorithm>
#include <cmath>

#include "AudioUnitProperties.h"
#include "NumberText.h"
#include "SignalSource.h"

namespace {

template <class T>
bool set(AudioUnit unit, AudioUnitPropertyID id, AudioUnitScope scope, const T& value) {
  return AudioUnitSetProperty(unit, id, scope, 0, &value, sizeof value) == noErr;
}

}  // namespace

std::unique_ptr<EffectRunner> EffectRunner::make(AudioUnit unit, const RenderFormat& format,
                                                 std::string& error) {
  auto runner = std::make_unique<EffectRunner>(Passkey(), unit, format);
  if (runner->prepare()) return runner;
  error = "the effect does not work with " + std::to_string(format.inputs) + " channels at " +
          foundation::fixedText(format.sampleRate, 0) + " Hz";
  return nullptr;
}

EffectRunner::~EffectRunner() {
  AudioUnitUninitialize(unit_);
  set(unit_, kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input, AURenderCallbackStruct{});
}

bool EffectRunner::prepare() {
  const AudioStreamBasicDescription input{format_.sampleRate,
                                          kAudioFormatLinearPCM,
                                          kAudioFormatFlagsNativeFloatPacked,
                                          4,
                                          1,
                                          4,
                                          format_.inputs,
                                          32,
                                          0};
  AudioStreamBasicDescription output = input;
  output.mChannelsPerFrame = format_.outputs;
  return set(unit_, kAudioUnitProperty_StreamFormat, kAudioUnitScope_Input, input) &&
         set(unit_, kAudioUnitProperty_StreamFormat, kAudioUnitScope_Output, output) &&
         set(unit_, kAudioUnitProperty_MaximumFramesPerSlice, kAudioUnitScope_Global,
             format_.maximumFrames) &&
         set(unit_, kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input,
             AURenderCallbackStruct{&supplyInput, this}) &&
         AudioUnitInitialize(unit_) == noErr;
}

UInt32 EffectRunner::latencyFrames() const {
  Float64 seconds = 0;
  UInt32 size = sizeof seconds;
  AudioUnitGetProperty(unit_, kAudioUnitProperty_Latency, kAudioUnitScope_Global, 0, &seconds, &size);
  return static_cast<UInt32>(std::lround(seconds * format_.sampleRate));
}

OSStatus EffectRunner::supplyInput(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                                   AudioBufferList* data) {
  const auto* runner = static_cast<const EffectRunner*>(self);
  for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
    data->mBuffers[c].mData = const_cast<float*>(runner->input_[c]);  // only read
  return noErr;
}

OSStatus EffectRunner::render(const float* const* input, float* const* output, UInt32 frames) {
  AudioBufferList list;
  list.mNumberBuffers = format_.outputs;
  for (UInt32 c = 0; c < format_.outputs; ++c)
    list.mBuffers[c] = {1, frames * UInt32{sizeof(float)}, output[c]};
  const AudioTimeStamp time{sampleTime_, 0, kAudioTimeStampSampleTimeValid};
  UInt32 flags = 0;
  input_ = input;
  const OSStatus status = AudioUnitRender(unit_, &flags, &time, 0, frames, &list);
  sampleTime_ += frames;
  return status;
}

OSStatus EffectRunner::pull(SignalSource& source, float* const* output, UInt32 frames) {
  for (UInt32 done = 0; done < frames;) {
    const UInt32 run = std::min(frames - done, format_.maximumFrames);
    float* part[kAudioMaximumChannels];
    for (UInt32 c = 0; c < format_.outputs; ++c) part[c] = output[c] + done;
    source.read(part, format_.outputs, run);
    if (const OSStatus status = render(part, part, run)) return status;
    done += run;
  }
  return noErr;
}
