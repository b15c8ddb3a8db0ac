#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

#include "NSLog.h"
#include "TestEffect.h"

namespace {

/// A unit with an input that a test supplies.
class Rendering : public testing::Test {
 protected:
  Rendering() {
    setGlobal(unit, 14, maximum);
    setGlobal(unit, 23,
              AURenderCallbackStruct{
                  [](void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32 frames,
                     AudioBufferList* data) { return static_cast<Rendering*>(self)->supply(*data, frames); },
                  this},
              1);
  }

  OSStatus render(UInt32 frames, float* first, float* second, UInt32 bus = 0) {
    list.mNumberBuffers = second ? 2 : 1;
    list.mBuffers[0] = {1, frames * 4, first};
    list.mBuffers[1] = {1, frames * 4, second};
    UInt32 flags = 0;
    const AudioTimeStamp time;
    return AudioUnitRender(unit.get(), &flags, &time, bus, frames, &list);
  }

  static constexpr UInt32 maximum = 256;
  Unit unit = openTestEffect();
  AudioBufferList list;
  std::function<OSStatus(AudioBufferList&, UInt32)> supply = [](AudioBufferList& data, UInt32 frames) {
    for (UInt32 c = 0; c < data.mNumberBuffers; ++c)
      std::fill_n(static_cast<float*>(data.mBuffers[c].mData), frames, static_cast<float>(c + 1));
    return noErr;
  };
  std::vector<float> left = std::vector<float>(maximum, -7.0f);
  std::vector<float> right = std::vector<float>(maximum, -7.0f);
};

}  // namespace

TEST_F(Rendering, RefusesWhatItCannotDo) {
  EXPECT_EQ(render(16, left.data(), right.data()), kAudioUnitErr_Uninitialized);
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  EXPECT_EQ(render(maximum + 1, left.data(), right.data()), kAudioUnitErr_TooManyFramesToProcess);
  EXPECT_EQ(render(16, left.data(), right.data(), 1), kAudioUnitErr_InvalidElement);
  EXPECT_EQ(render(16, left.data(), nullptr), paramErr);  // one buffer for two channels
  supply = [](AudioBufferList&, UInt32) { return OSStatus{-4711}; };
  EXPECT_EQ(render(16, left.data(), right.data()), -4711);
  supply = [](AudioBufferList& data, UInt32) {
    data.mBuffers[1].mData = nullptr;
    return noErr;
  };
  EXPECT_EQ(render(16, left.data(), right.data()), kAudioUnitErr_NoConnection);
  EXPECT_EQ(render(0, left.data(), right.data()), noErr);
  setGlobal(unit, 23, AURenderCallbackStruct{}, 1);
  EXPECT_EQ(render(16, left.data(), right.data()), kAudioUnitErr_NoConnection);
  EXPECT_EQ(left[0], -7);
}

TEST_F(Rendering, WritesToTheCallersMemoryOrLendsItsOwn) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  ASSERT_EQ(render(16, nullptr, right.data()), noErr);
  EXPECT_EQ(static_cast<float*>(list.mBuffers[0].mData)[15], 2);
  EXPECT_EQ(list.mBuffers[0].mDataByteSize, 64u);
  EXPECT_EQ(right[15], 4);
  EXPECT_EQ(right[16], -7);
}

TEST_F(Rendering, InputAndBothOutputsMayBeOneMemory) {
  AudioUnitSetParameter(unit.get(), 0, 0, 0, 0.5f, 0);
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  std::vector<float> one(16, 8.0f);
  supply = [&](AudioBufferList& data, UInt32) {
    for (AudioBuffer& buffer : data.mBuffers) buffer.mData = one.data();
    return noErr;
  };
  ASSERT_EQ(render(16, one.data(), one.data()), noErr);
  EXPECT_EQ(one, std::vector<float>(16, 4.0f));
}

TEST_F(Rendering, ReplacesWhatIsNoSound) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  const float faults[] = {std::nanf(""), std::numeric_limits<float>::infinity(),
                          -std::numeric_limits<float>::infinity(), 1e30f};
  supply = [&](AudioBufferList& data, UInt32 frames) {
    for (UInt32 c = 0; c < data.mNumberBuffers; ++c)
      for (UInt32 i = 0; i < frames; ++i) static_cast<float*>(data.mBuffers[c].mData)[i] = faults[i % 4];
    return noErr;
  };
  ASSERT_EQ(render(16, left.data(), right.data()), noErr);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(left[i], 0) << i;
}

TEST_F(Rendering, AChangeIsSmoothedAndAResetSnaps) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  AudioUnitSetParameter(unit.get(), 0, 0, 0, 0, 0);
  ASSERT_EQ(render(16, left.data(), right.data()), noErr);
  EXPECT_GT(left[15], 1.9f);
  EXPECT_LT(left[15], 2.0f);
  ASSERT_EQ(AudioUnitReset(unit.get(), 0, 0), noErr);
  ASSERT_EQ(render(16, left.data(), right.data()), noErr);
  EXPECT_EQ(left[0], 0);
}

TEST_F(Rendering, FlushesDenormalsOnlyInside) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  volatile float tiny = 1e-20f;
  supply = [&](AudioBufferList&, UInt32) { return tiny * tiny == 0.0f ? OSStatus{1} : noErr; };
  EXPECT_EQ(render(16, left.data(), right.data()), noErr);
  EXPECT_TRUE(static_cast<TestEffect*>(unit.get())->flushed);
  EXPECT_NE(tiny * tiny, 0.0f);
}

TEST_F(Rendering, AnExceptionOfTheInputStaysInside) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  const auto before = NSSetLogSink([](std::string_view) {});
  supply = [](AudioBufferList&, UInt32) -> OSStatus { throw std::runtime_error("gone"); };
  EXPECT_NE(render(16, left.data(), right.data()), noErr);
  NSSetLogSink(before);
}
