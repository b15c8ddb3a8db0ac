#include "SignalSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sndfile.hh>

#include "CommandLine.h"

namespace {

struct Stereo {
  std::vector<float> left;
  std::vector<float> right;
};

Stereo read(SignalSource& source, UInt32 frames) {
  Stereo sound{std::vector<float>(frames), std::vector<float>(frames)};
  float* const into[] = {sound.left.data(), sound.right.data()};
  source.read(into, 2, frames);
  return sound;
}

float peak(const std::vector<float>& samples) {
  float loudest = 0;
  for (const float sample : samples) loudest = std::max(loudest, std::fabs(sample));
  return loudest;
}

}  // namespace

TEST(SignalSource, GeneratedLoopsAreReproducibleAndHaveNoSeam) {
  std::string error;
  for (const char* name : {"tone", "noise", "drums"}) {
    SCOPED_TRACE(name);
    auto source = SignalSource::named(name, 48000, error);
    auto again = SignalSource::named(name, 48000, error);
    ASSERT_TRUE(source && again) << error;
    const auto loop = static_cast<UInt32>(source->loopFrames());
    const Stereo whole = read(*source, loop);
    // The same again, in pieces that straddle the loop's end.
    const Stereo pieces[] = {read(*again, loop - 100), read(*again, 200)};
    EXPECT_TRUE(std::equal(pieces[0].left.begin(), pieces[0].left.end(), whole.left.begin()));
    EXPECT_TRUE(std::equal(pieces[1].right.begin() + 100, pieces[1].right.end(), whole.right.begin()));
    EXPECT_GT(peak(whole.left), 0.2f);
    EXPECT_LT(peak(whole.left), 0.72f);
  }
}

TEST(SignalSource, AFileMustHaveTheRateAndItsOnlyChannelIsBoth) {
  const std::string path = testFolder() + "/ramp.wav";
  {
    SndfileHandle file(path, SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, 44100);
    std::vector<float> ramp(5000);
    for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<float>(i) / 5000;
    file.write(ramp.data(), 5000);
  }
  std::string error;
  EXPECT_FALSE(SignalSource::named(path, 48000, error));
  for (const char* part : {"ramp.wav", "44100", "48000"})
    EXPECT_NE(error.find(part), std::string::npos) << error;
  EXPECT_FALSE(SignalSource::named(path + "x", 44100, error));
  EXPECT_NE(error.find("ramp.wavx"), std::string::npos) << error;

  auto source = SignalSource::named(path, 44100, error);
  ASSERT_TRUE(source) << error;
  const Stereo sound = read(*source, 5002);
  EXPECT_EQ(sound.left, sound.right);
  EXPECT_EQ(sound.left[4999], 4999.0f / 5000);
  EXPECT_EQ(sound.left[5001], 1.0f / 5000);
}
