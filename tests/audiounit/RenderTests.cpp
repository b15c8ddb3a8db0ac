#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

#include "AUSmoothedValue.h"
#include "TestEffect.h"

namespace {

/// A stereo unit of at most 256 frames with an input that a test supplies; at first 1 on the left, 2 on the
/// right.
class Rendering : public testing::Test {
 protected:
  Rendering() {
    setGlobal(unit, kAudioUnitProperty_MaximumFramesPerSlice, UInt32{256});
    connect([](void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32 frames, AudioBufferList* data) {
      return static_cast<Rendering*>(self)->supply(*data, frames);
    });
  }

  void connect(AURenderCallback callback) {
    setGlobal(unit, kAudioUnitProperty_SetRenderCallback, AURenderCallbackStruct{callback, this},
              kAudioUnitScope_Input);
  }
  /// Into the caller's memory, or the effect's own where that is null.
  OSStatus render(UInt32 frames, float* first, float* second, UInt32 buffers = 2) {
    list = {buffers, {{1, frames * 4, first}, {1, frames * 4, second}}};
    return AudioUnitRender(unit.get(), nullptr, nullptr, 0, frames, &list);
  }
  OSStatus render() { return render(16, left.data(), right.data()); }

  Unit unit = openTestEffect();
  AudioBufferList list;
  std::function<OSStatus(AudioBufferList&, UInt32)> supply = [](AudioBufferList& data, UInt32 frames) {
    for (UInt32 c = 0; c < data.mNumberBuffers; ++c)
      std::fill_n(static_cast<float*>(data.mBuffers[c].mData), frames, static_cast<float>(c + 1));
    return noErr;
  };
  std::vector<float> left = std::vector<float>(256, -7.0f);
  std::vector<float> right = std::vector<float>(256, -7.0f);
};

}  // namespace

TEST_F(Rendering, RefusesWhatItCannotDo) {
  EXPECT_EQ(render(), kAudioUnitErr_Uninitialized);
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  EXPECT_EQ(render(257, left.data(), right.data()), kAudioUnitErr_TooManyFramesToProcess);
  EXPECT_EQ(render(16, left.data(), right.data(), 1), paramErr);  // one buffer for two channels
  supply = [](AudioBufferList&, UInt32) -> OSStatus { throw std::runtime_error(""); };
  EXPECT_EQ(render(), paramErr);
  supply = [](AudioBufferList&, UInt32) { return OSStatus{-4711}; };
  EXPECT_EQ(render(), -4711);
  connect(nullptr);
  EXPECT_EQ(render(), kAudioUnitErr_NoConnection);
  EXPECT_EQ(left[0], -7);
}

TEST_F(Rendering, WritesToTheCallersMemoryOrLendsItsOwn) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  ASSERT_EQ(render(16, nullptr, right.data()), noErr);
  EXPECT_EQ(static_cast<float*>(list.mBuffers[0].mData)[15], 2);
  EXPECT_TRUE(right[15] == 4 && right[16] == -7);
}

TEST_F(Rendering, ReplacesWhatIsNoSound) {
  AudioUnitInitialize(unit.get());
  const float infinity = std::numeric_limits<float>::infinity();
  const float faults[] = {std::nanf(""), infinity, -infinity, 1e30f};
  supply = [&](AudioBufferList& data, UInt32 frames) {
    for (AudioBuffer& buffer : data.mBuffers)
      for (UInt32 i = 0; i < frames; ++i) static_cast<float*>(buffer.mData)[i] = faults[i % 4];
    return noErr;
  };
  ASSERT_EQ(render(19, left.data(), right.data()), noErr);
  for (int i = 0; i < 19; ++i) EXPECT_EQ(left[i], 0) << i;
}

TEST_F(Rendering, AChangeIsSmoothedAndAResetSnaps) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  AudioUnitSetParameter(unit.get(), gainParameter, 0, 0, 0, 0);
  ASSERT_EQ(render(), noErr);
  EXPECT_TRUE(left[15] > 1.9f && left[15] < 2) << left[15];
  ASSERT_EQ(AudioUnitReset(unit.get(), 0, 0), noErr);
  ASSERT_EQ(render(), noErr);
  EXPECT_EQ(left[0], 0);
}

TEST(SmoothedValues, ReachTheirTargetInTimeHoweverOftenTheyAreToldIt) {
  AUSmoothedValue value;
  value.setSampleRate(48000);
  value.snap(-1);
  for (int frames = 0; frames < 960; frames += 64) {
    value.follow(1);
    EXPECT_NEAR(value.value(), -1 + static_cast<float>(frames) / 480, 1e-4f);
    EXPECT_FALSE(value.isSettled());
    value.advance(64);
  }
  EXPECT_TRUE(value.isSettled());
  EXPECT_EQ(value.value(), 1);
}

TEST_F(Rendering, FlushesDenormalsOnlyInside) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  volatile float tiny = 1e-20f;
  supply = [&](AudioBufferList&, UInt32) { return tiny * tiny == 0.0f ? OSStatus{1} : noErr; };
  EXPECT_EQ(render(), noErr);
  EXPECT_TRUE(dynamic_cast<TestEffect&>(*unit).flushed);
  EXPECT_NE(tiny * tiny, 0.0f);
}
