#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "TestEffect.h"

namespace {

constexpr AudioStreamBasicDescription mono{48000, kAudioFormatLinearPCM, 41, 4, 1, 4, 1, 32, 0};

std::string take(CFStringRef string) {
  const std::string text = CFStringGetText(string);
  CFRelease(string);
  return text;
}

std::vector<std::string> take(CFArrayRef list) {
  std::vector<std::string> texts;
  for (size_t i = 0; i < CFArrayGetCount(list); ++i)
    texts.push_back(CFStringGetText(CFArrayGetStringAtIndex(list, i)));
  CFRelease(list);
  return texts;
}

std::string presetName(const Unit& unit, AudioUnitPropertyID id = kAudioUnitProperty_PresentPreset) {
  return take(getProperty<AUPreset>(unit, id).presetName);
}

float parameter(const Unit& unit, AudioUnitParameterID id) {
  Float32 value = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), id, 0, 0, &value), noErr);
  return value;
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
              {8, 0, 0, kAudioUnitErr_InvalidScope},
              {8, 2, 0, noErr},
              {8, 3, 0, kAudioUnitErr_InvalidScope},
              {8, 35, 0, kAudioUnitErr_InvalidScope},
              {4, 0, 1000, noErr},
              {4, 0, 2, kAudioUnitErr_InvalidParameter},
              {16, 0, 0, kAudioUnitErr_InvalidProperty},
              {21, 0, 0, kAudioUnitErr_InvalidProperty},
              {23, 1, 0, noErr}};
  for (const auto& row : rows)
    EXPECT_EQ(AudioUnitGetPropertyInfo(unit.get(), row.id, row.scope, row.element, nullptr, nullptr),
              row.status)
        << row.id << " " << row.scope << " " << row.element;
  EXPECT_EQ(AudioUnitGetPropertyInfo(nullptr, 2, 0, 0, nullptr, nullptr), paramErr);
}

TEST(Properties, ATooSmallBufferIsAnErrorAndStaysAsItWas) {
  const Unit unit = openTestEffect();
  AudioUnitParameterInfo info;
  info.clumpID = 77;
  UInt32 size = sizeof info - 1;
  EXPECT_EQ(AudioUnitGetProperty(unit.get(), 4, 0, 0, &info, &size), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(info.clumpID, 77u);
  size = 200;
  char roomy[200];
  EXPECT_EQ(AudioUnitGetProperty(unit.get(), 4, 0, 0, roomy, &size), noErr);
  EXPECT_EQ(size, sizeof info);
}

TEST(Properties, TheListNamesEveryParameterInOrderAndOtherScopesHaveNone) {
  const Unit unit = openTestEffect();
  UInt32 size = 0;
  Boolean writable = true;
  ASSERT_EQ(AudioUnitGetPropertyInfo(unit.get(), 3, 0, 0, &size, &writable), noErr);
  EXPECT_FALSE(writable);
  std::vector<UInt32> ids(size / 4);
  ASSERT_EQ(AudioUnitGetProperty(unit.get(), 3, 0, 0, ids.data(), &size), noErr);
  EXPECT_EQ(ids, (std::vector<UInt32>{0, 1, 5, 7, 1000}));
  EXPECT_EQ(AudioUnitGetPropertyInfo(unit.get(), 3, 1, 0, &size, nullptr), noErr);
  EXPECT_EQ(size, 0u);
}

TEST(Properties, ADescriptionsNameBelongsToWhomItsFlagsSay) {
  const Unit unit = openTestEffect();
  const auto gain = getProperty<AudioUnitParameterInfo>(unit, 4, 0, 0);
  EXPECT_STREQ(gain.name, "gain");
  EXPECT_EQ(CFStringGetText(gain.cfNameString), "gain");

  const auto plain = getProperty<AudioUnitParameterInfo>(unit, 4, 0, 5);
  EXPECT_STREQ(plain.name,
               "gr\x9A\xA7"
               "e");
  EXPECT_EQ(plain.cfNameString, nullptr);

  // Released once for each reading; one release too many would show under the address sanitizer.
  for (int reading = 0; reading < 3; ++reading)
    EXPECT_EQ(take(getProperty<AudioUnitParameterInfo>(unit, 4, 0, 7).cfNameString), "given away");
}

TEST(Properties, ValuesHaveTexts) {
  const Unit unit = openTestEffect();
  EXPECT_EQ(take(getProperty<CFArrayRef>(unit, 16, 0, 1)), (std::vector<std::string>{"soft", "hard"}));
  const auto text = [&](AudioUnitParameterID id, const float* value) {
    AudioUnitParameterStringFromValue request{id, value, nullptr};
    UInt32 size = sizeof request;
    EXPECT_EQ(AudioUnitGetProperty(unit.get(), 33, 0, id, &request, &size), noErr);
    return take(request.outString);
  };
  const float one = 1;
  const float half = -6.5f;
  EXPECT_EQ(text(1, &one), "hard");
  EXPECT_EQ(text(7, &half), "-6.5 dB");
  EXPECT_EQ(text(1, &half), "-6.5");
  EXPECT_EQ(text(5, nullptr), "1000 Hz");
}

TEST(Properties, FormatsAreSetBeforeInitialisationOnly) {
  const Unit unit = openTestEffect();
  EXPECT_EQ(setGlobal(unit, 2, 499.0), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(setGlobal(unit, 2, std::nan("")), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(setGlobal(unit, 2, 96000.0f), kAudioUnitErr_InvalidPropertyValue);  // a float is too short
  EXPECT_EQ(setGlobal(unit, 2, 96000.0), noErr);
  EXPECT_EQ(getProperty<AudioStreamBasicDescription>(unit, 8, 1).mSampleRate, 96000);
  EXPECT_EQ(getProperty<AudioStreamBasicDescription>(unit, 8, 2).mSampleRate, 96000);

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

TEST(Properties, ChannelsThatTheEffectDoesNotKnowFailToInitialise) {
  auto stereo = mono;
  stereo.mChannelsPerFrame = 2;
  const struct {
    AudioStreamBasicDescription in, out;
    OSStatus status;
  } rows[] = {{mono, mono, noErr},
              {mono, stereo, noErr},
              {stereo, stereo, noErr},
              {stereo, mono, kAudioUnitErr_FormatNotSupported}};
  for (const auto& row : rows) {
    const Unit unit = openTestEffect();
    setGlobal(unit, 8, row.in, 1);
    setGlobal(unit, 8, row.out, 2);
    EXPECT_EQ(AudioUnitInitialize(unit.get()), row.status) << &row - rows;
  }
  const Unit unit = openTestEffect();  // 44100 at the output still
  setGlobal(unit, 8, mono, 1);
  EXPECT_EQ(AudioUnitInitialize(unit.get()), kAudioUnitErr_FormatNotSupported);
}

TEST(Parameters, AreClampedAndRefuseWhatIsNoValue) {
  const Unit unit = openTestEffect();
  const auto set = [&](AudioUnitParameterID id, float value) {
    return AudioUnitSetParameter(unit.get(), id, 0, 0, value, 0);
  };
  EXPECT_EQ(set(0, 5), noErr);
  EXPECT_EQ(parameter(unit, 0), 2);
  EXPECT_EQ(set(0, -std::numeric_limits<float>::infinity()), noErr);
  EXPECT_EQ(parameter(unit, 0), -2);
  EXPECT_EQ(set(0, std::nanf("")), kAudioUnitErr_InvalidPropertyValue);
  EXPECT_EQ(parameter(unit, 0), -2);
  EXPECT_EQ(set(1000, 1), kAudioUnitErr_PropertyNotWritable);
  EXPECT_EQ(set(2, 1), kAudioUnitErr_InvalidParameter);
  Float32 untouched = 7;
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), 1001, 0, 0, &untouched), kAudioUnitErr_InvalidParameter);
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), 0, 1, 0, &untouched), kAudioUnitErr_InvalidScope);
  EXPECT_EQ(AudioUnitGetParameter(unit.get(), 0, 0, 1, &untouched), kAudioUnitErr_InvalidElement);
  EXPECT_EQ(untouched, 7);
}

TEST(Presets, SetEveryParameterAndKeepTheirName) {
  const Unit unit = openTestEffect();
  EXPECT_EQ(take(getProperty<CFArrayRef>(unit, 24)), (std::vector<std::string>{"Plain", "Half", "Over"}));
  EXPECT_EQ(presetName(unit), "Untitled");

  AudioUnitSetParameter(unit.get(), 7, 0, 0, -3, 0);
  EXPECT_EQ(setGlobal(unit, 28, AUPreset{1, nullptr}), noErr);
  EXPECT_EQ(parameter(unit, 0), 0.5f);
  EXPECT_EQ(parameter(unit, 5), 440);
  EXPECT_EQ(parameter(unit, 7), 0);  // not named by the preset: back at its default
  EXPECT_EQ(presetName(unit), "Half");
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{2, nullptr}), noErr);
  EXPECT_EQ(parameter(unit, 0), 2);  // what a preset asks beyond the range is limited
  EXPECT_EQ(presetName(unit, 28), "Over");
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{3, nullptr}), kAudioUnitErr_InvalidPropertyValue);

  const CFStringRef mine = CFStringCreateWithCString("Mine", kCFStringEncodingUTF8);
  EXPECT_EQ(setGlobal(unit, 36, AUPreset{-1, mine}), noErr);
  CFRelease(mine);
  EXPECT_EQ(parameter(unit, 0), 2);  // a user's setting is only a name
  EXPECT_EQ(presetName(unit), "Mine");
}
