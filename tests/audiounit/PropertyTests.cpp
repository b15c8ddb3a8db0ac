#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "TestEffect.h"

TEST(Properties, AnswerWithTheStatusThatFits) {
  const Unit unit = openTestEffect();
  const struct {
    AudioUnitPropertyID id;
    AudioUnitScope scope;
    AudioUnitElement element;
    OSStatus status;
  } rows[] = {{2, 0, 1, kAudioUnitErr_InvalidElement},
              {8, 2, 0, noErr},
              {8, 3, 0, kAudioUnitErr_InvalidScope},
              {4, 0, absentParameter, kAudioUnitErr_InvalidParameter},
              {21, 0, 0, kAudioUnitErr_InvalidProperty}};
  for (const auto& row : rows)
    EXPECT_EQ(AudioUnitGetPropertyInfo(unit.get(), row.id, row.scope, row.element, nullptr, nullptr),
              row.status)
        << row.id << " " << row.scope << " " << row.element;
}

TEST(Properties, FormatsAreSetBeforeInitialisationOnly) {
  const Unit unit = openTestEffect();
  for (const double wrong : {499.0, std::nan("")})
    EXPECT_EQ(setGlobal(unit, 2, wrong), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(setGlobal(unit, 2, 96000.0), noErr);
  EXPECT_EQ(getProperty<AudioStreamBasicDescription>(unit, 8, 2).mSampleRate, 96000);

  const AudioStreamBasicDescription surround{48000, kAudioFormatLinearPCM, 41, 4, 1, 4, 3, 32, 0};
  EXPECT_EQ(setGlobal(unit, 8, surround, 1), kAudioUnitErr_FormatNotSupported);
  EXPECT_EQ(setGlobal(unit, 14, UInt32{256}), noErr);
  EXPECT_EQ(AudioUnitInitialize(unit.get()), noErr);
  EXPECT_EQ(setGlobal(unit, 2, 44100.0), kAudioUnitErr_Initialized);
  EXPECT_EQ(setGlobal(unit, 14, UInt32{512}), kAudioUnitErr_Initialized);
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
  EXPECT_EQ(AudioUnitSetParameter(unit.get(), absentParameter, 0, 0, 1, 0), kAudioUnitErr_InvalidParameter);
}

TEST(Presets, SetEveryParameterWithinItsRange) {
  const Unit unit = openTestEffect();
  AudioUnitSetParameter(unit.get(), givenParameter, 0, 0, -3, 0);
  EXPECT_EQ(setGlobal(unit, 28, AUPreset{1, nullptr}), noErr);
  EXPECT_EQ(valueOf(unit, gainParameter), 9);
  EXPECT_EQ(valueOf(unit, freqParameter), 440);
  EXPECT_EQ(valueOf(unit, givenParameter), 0);  // not named by the preset: back at its default
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{2, nullptr}), noErr);
  EXPECT_EQ(valueOf(unit, gainParameter), 10);  // what a preset asks beyond the range is limited
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{3, nullptr}), kAudioUnitErr_InvalidPropertyValue);
}
