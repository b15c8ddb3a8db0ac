#pragma once

#include <atomic>
#include <span>
#include <string>
#include <vector>

#include "AUParameterTable.h"
#include "AUSmoothedValue.h"
#include "AudioUnitProperties.h"

/// What is fixed about a kind of effect. Tables are not copied.
struct AUEffectTraits {
  std::span<const AUParameterRow> parameters;  // ascending identifiers
  std::span<const AUPresetRow> presets;
  Float64 minimumSampleRate = 8000;
  bool monoToStereo = false;  // beside mono to mono and stereo to stereo
  bool hasRenderQuality = false;
};

/// Base of every effect. It keeps formats, parameters, presets and properties and does all that a render
/// owes its caller; an effect adds two tables and what it does to samples:
///
///   constexpr AUParameterRow parameters[] = {{0, "gain", kAudioUnitParameterUnit_Decibels, -40, 40, 0}};
///   constexpr AUPresetRow presets[] = {{"Unity"}, {"Half", {{{0, -6}}}}};
///   class Gain : public AUEffectBase {
///    public:
///     Gain() : AUEffectBase({parameters, presets}) {}
///    private:
///     void process(std::span<float* const> channels, UInt32 frames) override {
///       for (UInt32 i = 0; i < frames; ++i) {
///         const float factor = decibels(smoothed(0).next());
///         for (float* channel : channels) channel[i] *= factor;
///       }
///     }
///   };
///
/// An effect has no static state and looks at nothing but its samples, its parameters and its rate, so
/// that a second instance with the same parameters answers like the first.
class AUEffectBase {
 public:
  static constexpr Float64 maximumSampleRate = 384000;
  static constexpr UInt32 maximumFramesLimit = 1u << 20;

  explicit AUEffectBase(const AUEffectTraits& traits);
  virtual ~AUEffectBase();
  AUEffectBase(const AUEffectBase&) = delete;
  AUEffectBase& operator=(const AUEffectBase&) = delete;

  // What the functions of AudioUnit.h call; their descriptions apply.
  OSStatus initialize();
  void uninitialize() { initialized_ = false; }
  OSStatus reset();
  virtual OSStatus propertyInfo(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                                UInt32& size, bool& writable) const;
  virtual OSStatus getProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                               void* data, UInt32& size) const;
  OSStatus setProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                       const void* data, UInt32 size);
  virtual OSStatus getParameter(AudioUnitParameterID id, Float32& value) const;
  OSStatus setParameter(AudioUnitParameterID id, Float32 value);
  OSStatus render(UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 frames, AudioBufferList& data);

  /// Writes a read-only parameter: an effect its own, and a host one of an instance that does not render but
  /// stands for another that does. Any thread.
  void setMeter(AudioUnitParameterID id, Float32 value) {
    parameters_.setValueAt(parameters_.indexOf(id), value);
  }

  Component component() const { return component_; }
  void setComponent(Component component) { component_ = component; }
  /// Different for every instance of the process, unlike its address.
  UInt64 serial() const { return serial_; }

 protected:
  Float64 sampleRate() const { return formats_[0].mSampleRate; }
  UInt32 inputChannels() const { return formats_[0].mChannelsPerFrame; }
  UInt32 outputChannels() const { return formats_[1].mChannelsPerFrame; }
  UInt32 maximumFrames() const { return maximumFrames_; }
  UInt32 renderQuality() const { return renderQuality_.load(std::memory_order_relaxed); }

  /// A parameter's value of the moment, and the same smoothed. Each smoothed value must be moved on by
  /// process() by as many frames as it renders.
  Float32 value(AudioUnitParameterID id) const { return parameters_.valueAt(parameters_.indexOf(id)); }
  AUSmoothedValue& smoothed(AudioUnitParameterID id) { return smoothed_[parameters_.indexOf(id)]; }
  /// Property 12, in seconds; 0 at first. A change is announced. Main thread.
  void setLatency(Float64 seconds);
  /// Tells the listeners of a property that it changed. Any thread.
  void announcePropertyChange(AudioUnitPropertyID id, AudioUnitScope scope = kAudioUnitScope_Global);

 private:
  /// Takes what memory process() needs: rate, channels and maximum of frames are final.
  virtual void prepare() = 0;
  /// Empties every history and sets oscillators and random seeds to their start; the smoothed values stand
  /// at their targets already. Follows prepare(), and is called for each reset.
  virtual void clear() = 0;
  /// Renders in place, `frames` > 0. As many channels as the output has; of them the first
  /// inputChannels() hold the input, the others nothing. The memory is the effect's own and never that of
  /// two channels at once. Input is finite. Denormals are flushed. No lock, allocation or system call.
  virtual void process(std::span<float* const> channels, UInt32 frames) = 0;
  /// Seconds in which the output dies away after the input fell silent.
  virtual Float64 tailTime() const { return 0; }

  struct PropertyRow;
  const PropertyRow* propertyRow(AudioUnitPropertyID id) const;
  OSStatus checkAddress(const PropertyRow& row, AudioUnitScope scope, AudioUnitElement element) const;
  const AudioStreamBasicDescription& format(AudioUnitScope scope) const {
    return formats_[scope == kAudioUnitScope_Output];
  }
  bool supportsRate(Float64 rate) const {
    return rate >= traits_.minimumSampleRate && rate <= maximumSampleRate;
  }
  bool supportsFormat(const AudioStreamBasicDescription& wanted) const;
  OSStatus choosePreset(const AUPreset& preset, bool& changed);
  OSStatus pullInput(UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 frames);

  const AUEffectTraits traits_;
  const UInt64 serial_;
  Component component_ = nullptr;
  AUParameterTable parameters_;
  std::vector<AUSmoothedValue> smoothed_;
  AudioStreamBasicDescription formats_[2];  // input, output
  UInt32 maximumFrames_ = 4096;
  bool initialized_ = false;
  std::atomic<Float64> latency_ = 0;
  std::atomic<UInt32> renderQuality_ = kRenderQuality_Max;
  AURenderCallbackStruct inputCallback_;
  HostCallbackInfo hostCallbacks_;
  SInt32 presetNumber_ = -1;
  std::string presetName_ = "Untitled";
  std::vector<float> memory_[kAudioMaximumChannels];
};
