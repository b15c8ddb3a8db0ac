#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

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
  OSStatus render(UInt32 frames, float* first, float* second, UInt32 bus = 0, UInt32 buffers = 2) {
    list.mNumberBuffers = buffers;
    list.mBuffers[0] = {1, frames * 4, first};
    list.mBuffers[1] = {1, frames * 4, second};
    return AudioUnitRender(unit.get(), nullptr, nullptr, bus, frames, &list);
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
  EXPECT_EQ(render(16, left.data(), right.data(), 1), kAudioUnitErr_InvalidElement);
  EXPECT_EQ(render(16, left.data(), right.data(), 0, 1), paramErr);  // one buffer for two channels
  supply = [](AudioBufferList&, UInt32) { return OSStatus{-4711}; };
  EXPECT_EQ(render(), -4711);
  supply = [](AudioBufferList& data, UInt32) {
    data.mBuffers[1].mData = nullptr;
    return noErr;
  };
  EXPECT_EQ(render(), kAudioUnitErr_NoConnection);
  EXPECT_EQ(render(0, left.data(), right.data()), noErr);
  connect(nullptr);
  EXPECT_EQ(render(), kAudioUnitErr_NoConnection);
  EXPECT_EQ(left[0], -7);
}

TEST_F(Rendering, WritesToTheCallersMemoryOrLendsItsOwn) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  ASSERT_EQ(render(16, nullptr, right.data()), noErr);
  EXPECT_EQ(static_cast<float*>(list.mBuffers[0].mData)[15], 2);
  EXPECT_EQ(list.mBuffers[0].mDataByteSize, 64u);
  EXPECT_EQ(right[15], 4);
  EXPECT_EQ(right[16], -7);

  supply = [&](AudioBufferList& data, UInt32) {  // input and both outputs may be one memory
    for (AudioBuffer& buffer : data.mBuffers) buffer.mData = left.data();
    return noErr;
  };
  ASSERT_EQ(render(16, left.data(), left.data()), noErr);
  EXPECT_EQ(left[15], -14);
}

TEST_F(Rendering, ReplacesWhatIsNoSound) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
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
  EXPECT_GT(left[15], 1.9f);
  EXPECT_LT(left[15], 2.0f);
  ASSERT_EQ(AudioUnitReset(unit.get(), 0, 0), noErr);
  ASSERT_EQ(render(), noErr);
  EXPECT_EQ(left[0], 0);
}

TEST_F(Rendering, FlushesDenormalsOnlyInside) {
  ASSERT_EQ(AudioUnitInitialize(unit.get()), noErr);
  volatile float tiny = 1e-20f;
  supply = [&](AudioBufferList&, UInt32) { return tiny * tiny == 0.0f ? OSStatus{1} : noErr; };
  EXPECT_EQ(render(), noErr);
  EXPECT_TRUE(dynamic_cast<TestEffect&>(*unit).flushed);
  EXPECT_NE(tiny * tiny, 0.0f);
}
