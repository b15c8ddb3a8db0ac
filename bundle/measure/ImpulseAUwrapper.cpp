#include "ImpulseAUwrapper.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <new>

#include "AudioUnitProperties.h"
#include "Class.h"
#include "NSAssertionHandler.h"
#include "NSLog.h"
#include "VectorOperations.h"

namespace {

constexpr const char* initMethod = "initForAudioUnit:sampleRate:fftOrder:renderToStereo:";

AudioStreamBasicDescription nativePcm(double sampleRate, UInt32 channels) {
  return {.mSampleRate = sampleRate,
          .mFormatID = kAudioFormatLinearPCM,
          .mFormatFlags = kAudioFormatFlagsNativeFloatPacked,
          .mBytesPerPacket = sizeof(Float32),
          .mFramesPerPacket = 1,
          .mBytesPerFrame = sizeof(Float32),
          .mChannelsPerFrame = channels,
          .mBitsPerChannel = 8 * sizeof(Float32)};
}

}  // namespace

const Class& ImpulseAUwrapper::isa() const {
  return record();
}

const Class& ImpulseAUwrapper::record() {
  static const Class c = Class::of<ImpulseAUwrapper>("ImpulseAUwrapper", NSObject::record());
  return c;
}

AudioStreamBasicDescription ImpulseAUwrapper::nativeMonoPcmABDWithSampleRate(double sampleRate) {
  return nativePcm(sampleRate, 1);
}

AudioStreamBasicDescription ImpulseAUwrapper::nativeStereoPcmABDWithSampleRate(double sampleRate) {
  return nativePcm(sampleRate, 2);
}

ImpulseAUwrapper::Floats ImpulseAUwrapper::pageAligned(size_t count) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t bytes = (count * sizeof(float) + page - 1) / page * page;
  auto* memory = static_cast<float*>(std::aligned_alloc(page, bytes));
  if (!memory) throw std::bad_alloc();
  return Floats(memory);
}

void ImpulseAUwrapper::expect(OSStatus status, const char* method, int line, const char* failure) const {
  if (status != noErr)
    NSAssertionHandler::currentHandler().handleFailureInMethod(method, this, "ImpulseAUwrapper", line,
                                                               failure);
}

ImpulseAUwrapper::ImpulseAUwrapper(AudioUnit parent, double sampleRate, unsigned long fftOrder,
                                   bool renderToStereo)
    : _parentAU(parent), _bufferSize(1u << fftOrder), toStereo(renderToStereo) {
  ComponentDescription description;
  expect(GetComponentInfo(parent, &description, nullptr, nullptr, nullptr), initMethod, __LINE__,
         "Error getting component description");
  const Component component = FindNextComponent(nullptr, &description);
  expect(component ? noErr : paramErr, initMethod, __LINE__, "Error locating component");
  AudioUnit unit = nullptr;
  const OSStatus opened = OpenAComponent(component, &unit);
  impulseAU.reset(unit);
  expect(opened, initMethod, __LINE__, "Error opening component instance");

  if (sampleRate == 0) sampleRate = 44100;
  const auto set = [&](AudioUnitPropertyID property, AudioUnitScope scope, const auto& value, int line,
                       const char* failure) {
    expect(AudioUnitSetProperty(unit, property, scope, 0, &value, sizeof value), initMethod, line, failure);
  };
  const auto mono = nativeMonoPcmABDWithSampleRate(sampleRate);
  const auto out = toStereo ? nativeStereoPcmABDWithSampleRate(sampleRate) : mono;
  set(kAudioUnitProperty_SampleRate, kAudioUnitScope_Global, sampleRate, __LINE__,
      "Error setting samplerate");
  set(kAudioUnitProperty_StreamFormat, kAudioUnitScope_Input, mono, __LINE__,
      "Error setting input stream format");
  set(kAudioUnitProperty_StreamFormat, kAudioUnitScope_Output, out, __LINE__,
      "Error setting output stream format");
  set(kAudioUnitProperty_MaximumFramesPerSlice, kAudioUnitScope_Global, _bufferSize, __LINE__,
      "Error setting max frames per slice");
  set(kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input,
      AURenderCallbackStruct{&auRenderCallback, this}, __LINE__, "Setting input render callback failed.\n");
  expect(AudioUnitInitialize(unit), initMethod, __LINE__, "Error initializing the impulse AudioUnit");

  _impulseBuffer = pageAligned(2 * _bufferSize);
  realp_ = pageAligned(2 * _bufferSize);
  imagp_ = pageAligned(2 * _bufferSize);
  A_ = {realp_.get(), imagp_.get()};
  _window = pageAligned(_bufferSize);
  vDSP_blkman_window(_window.get(), 2 * _bufferSize, vDSP_HALF_WINDOW);
  vDSP_vrvrs(_window.get(), 1, _bufferSize);
  _mFFT = std::make_unique<VdspFFT>(fftOrder + 1);
}

void ImpulseAUwrapper::synchronizeParameters() {
  UInt32 quality = 0, size = sizeof quality;
  if (AudioUnitGetProperty(_parentAU, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                           &size) == noErr)
    AudioUnitSetProperty(impulseAU.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0,
                         &quality, sizeof quality);

  const auto set = [this](AudioUnitParameterID id, Float32 value) {
    AudioUnitSetParameter(impulseAU.get(), id, kAudioUnitScope_Global, 0, value, 0);
  };
  AudioUnitParameterID count = 0;
  for (Float32 value = 0; AudioUnitGetParameter(_parentAU, count, kAudioUnitScope_Global, 0, &value) == noErr;
       ++count)
    set(count, value);
  if (!paramOverrides) return;
  for (const auto& [id, value] : *paramOverrides)
    if (id < count) set(id, value);
}

const float* ImpulseAUwrapper::renderImpulse() {
  synchronizeParameters();
  float* buffer = _impulseBuffer.get();
  std::fill_n(buffer, 2 * _bufferSize, 0.0f);
  buffer[0] = 1;

  const AudioTimeStamp start{.mFlags = kAudioTimeStampSampleTimeValid};
  const AudioBuffer channel{1, _bufferSize * static_cast<UInt32>(sizeof(float)), buffer};
  AudioBufferList data{toStereo ? 2u : 1u, {channel, channel}};
  UInt32 flags = 0;
  expect(AudioUnitReset(impulseAU.get(), kAudioUnitScope_Global, 0), "renderImpulse", __LINE__,
         "Error resetting the AU");
  expect(AudioUnitRender(impulseAU.get(), &flags, &start, 0, _bufferSize, &data), "renderImpulse", __LINE__,
         "Error during AU rendering");

  const auto isFinite = [](float sample) { return std::isfinite(sample); };
  if (!toldOfNotFinite_ && !std::all_of(buffer, buffer + _bufferSize, isFinite)) {
    NSLog("The effect renders samples that are not finite; its graph shows what there is.");
    toldOfNotFinite_ = true;
  }
  return buffer;
}

const float* ImpulseAUwrapper::freqResponse() {
  renderImpulse();
  float* buffer = _impulseBuffer.get();
  vmul(buffer, 1, _window.get(), 1, buffer, 1, _bufferSize);
  _mFFT->absoluteValue_absoluteOut(_mFFT->forwardFFT(A_, buffer), buffer);
  _mFFT->convertToDB(buffer);
  return buffer;
}

OSStatus auRenderCallback(void* wrapper, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                          AudioBufferList* data) {
  data->mBuffers[0].mData = static_cast<ImpulseAUwrapper*>(wrapper)->impulseBuffer();
  return noErr;
}
