#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "TestEffect.h"

namespace {

std::string take(CFStringRef string) {
  const std::string text = CFStringGetText(string);
  CFRelease(string);
  return text;
}

std::string presetName(const Unit& unit, AudioUnitPropertyID id = kAudioUnitProperty_PresentPreset) {
  return take(getProperty<AUPreset>(unit, id).presetName);
}

}  // namespace

TEST(Properties, AnswerWithTheStatusThatFits) {
  const Unit unit = openTestEffect();
  const struct {
    AudioUnitPropertyID id;
    AudioUnitScope scope;
    AudioUnitElement element;
    OSStatus status;
  } rows[] = {{2, 0, 0, noErr},
              {2, 0, 1, kAudioUnitErr_InvalidElement},
              {2, 1, 0, kAudioUnitErr_InvalidScope},
              {8, 2, 0, noErr},
              {8, 3, 0, kAudioUnitErr_InvalidScope},
              {8, 35, 0, kAudioUnitErr_InvalidScope},
              {4, 0, meterParameter, noErr},
              {4, 0, absentParameter, kAudioUnitErr_InvalidParameter},
              {16, 0, gainParameter, kAudioUnitErr_InvalidProperty},
              {21, 0, 0, kAudioUnitErr_InvalidProperty}};
  for (const auto& row : rows)
    EXPECT_EQ(AudioUnitGetPropertyInfo(unit.get(), row.id, row.scope, row.element, nullptr, nullptr),
              row.status)
        << row.id << " " << row.scope << " " << row.element;
  EXPECT_EQ(AudioUnitGetPropertyInfo(nullptr, 2, 0, 0, nullptr, nullptr), paramErr);
}

TEST(Properties, ATooSmallBufferIsAnErrorAndStaysAsItWas) {
  const Unit unit = openTestEffect();
  AudioUnitParameterInfo info[2];
  info[0].clumpID = 77;
  UInt32 size = sizeof info[0] - 1;
  EXPECT_EQ(AudioUnitGetProperty(unit.get(), 4, 0, 0, info, &size), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(info[0].clumpID, 77u);
  size = sizeof info;
  EXPECT_EQ(AudioUnitGetProperty(unit.get(), 4, 0, 0, info, &size), noErr);
  EXPECT_EQ(size, sizeof info[0]);
}

TEST(Properties, FormatsAreSetBeforeInitialisationOnly) {
  const Unit unit = openTestEffect();
  EXPECT_EQ(setGlobal(unit, 2, 499.0), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(setGlobal(unit, 2, std::nan("")), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(setGlobal(unit, 2, 96000.0f), kAudioUnitErr_InvalidPropertyValue);  // a float is too short
  EXPECT_EQ(setGlobal(unit, 2, 96000.0), noErr);
  EXPECT_EQ(getProperty<AudioStreamBasicDescription>(unit, 8, 1).mSampleRate, 96000);
  EXPECT_EQ(getProperty<AudioStreamBasicDescription>(unit, 8, 2).mSampleRate, 96000);

  const AudioStreamBasicDescription mono{48000, kAudioFormatLinearPCM, 41, 4, 1, 4, 1, 32, 0};
  for (auto fault :
       {&AudioStreamBasicDescription::mFormatFlags, &AudioStreamBasicDescription::mBytesPerFrame,
        &AudioStreamBasicDescription::mChannelsPerFrame, &AudioStreamBasicDescription::mBitsPerChannel}) {
    AudioStreamBasicDescription wrong = mono;
    wrong.*fault = 3;
    EXPECT_EQ(setGlobal(unit, 8, wrong, 1), kAudioUnitErr_FormatNotSupported);
  }
  EXPECT_EQ(setGlobal(unit, 14, UInt32{256}), noErr);
  EXPECT_EQ(AudioUnitInitialize(unit.get()), noErr);
  EXPECT_EQ(setGlobal(unit, 2, 44100.0), kAudioUnitErr_Initialized);
  EXPECT_EQ(setGlobal(unit, 8, mono, 1), kAudioUnitErr_Initialized);
  EXPECT_EQ(setGlobal(unit, 14, UInt32{512}), kAudioUnitErr_Initialized);
  AudioUnitUninitialize(unit.get());
  EXPECT_EQ(setGlobal(unit, 14, UInt32{512}), noErr);
  EXPECT_EQ(setGlobal(unit, 12, 1.0), kAudioUnitErr_PropertyNotWritable);
}

TEST(Parameters, AreClampedAndRefuseWhatIsNoValue) {
  const Unit unit = openTestEffect();
  const float infinity = std::numeric_limits<float>::infinity();
  const struct {
    AudioUnitParameterID id;
    float value;
    OSStatus status;
    float after;
  } rows[] = {{givenParameter, 13, noErr, 12},
              {givenParameter, -infinity, noErr, -12},
              {givenParameter, std::nanf(""), kAudioUnitErr_InvalidPropertyValue, -12},
              {meterParameter, 1, kAudioUnitErr_PropertyNotWritable, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(AudioUnitSetParameter(unit.get(), row.id, 0, 0, row.value, 0), row.status);
    EXPECT_EQ(valueOf(unit, row.id), row.after);
  }
  Float32 untouched = 7;
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), absentParameter, 0, 0, &untouched),
            kAudioUnitErr_InvalidParameter);
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), 0, 1, 0, &untouched), kAudioUnitErr_InvalidScope);
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), 0, 0, 1, &untouched), kAudioUnitErr_InvalidElement);
  EXPECT_EQ(untouched, 7);
}

TEST(Presets, SetEveryParameterAndKeepTheirName) {
  const Unit unit = openTestEffect();
  const CFArrayRef names = getProperty<CFArrayRef>(unit, kAudioUnitProperty_FactoryPresets);
  ASSERT_EQ(CFArrayGetCount(names), 3u);
  EXPECT_EQ(CFStringGetText(CFArrayGetStringAtIndex(names, 1)), "Loud");
  CFRelease(names);
  EXPECT_EQ(presetName(unit), "Untitled");

  AudioUnitSetParameter(unit.get(), givenParameter, 0, 0, -3, 0);
  EXPECT_EQ(setGlobal(unit, 28, AUPreset{1, nullptr}), noErr);
  EXPECT_EQ(valueOf(unit, gainParameter), 9);
  EXPECT_EQ(valueOf(unit, freqParameter), 440);
  EXPECT_EQ(valueOf(unit, givenParameter), 0);  // not named by the preset: back at its default
  EXPECT_EQ(presetName(unit), "Loud");
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{2, nullptr}), noErr);
  EXPECT_EQ(valueOf(unit, gainParameter), 10);  // what a preset asks beyond the range is limited
  EXPECT_EQ(presetName(unit, 28), "Over");
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{3, nullptr}), kAudioUnitErr_InvalidPropertyValue);

  const CFStringRef mine = CFStringCreateWithCString("Mine", kCFStringEncodingUTF8);
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{-1, mine}), noErr);
  CFRelease(mine);
  EXPECT_EQ(valueOf(unit, gainParameter), 10);  // a user's setting is only a name
  EXPECT_EQ(presetName(unit), "Mine");
}
