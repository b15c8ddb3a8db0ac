#include <algorithm>
#include <fstream>
#include <random>
#include <sndfile.hh>

#include "CommandLine.h"

namespace fs = std::filesystem;

namespace {

constexpr int wav = SF_FORMAT_WAV | SF_FORMAT_PCM_16;

class Process : public testing::Test {
 protected:
  using Samples = std::vector<int>;  // frame by frame, the file's own values in the upper bits

  void write(int format, int channels, const Samples& samples) {
    SndfileHandle file(in, SFM_WRITE, format, channels, 48000);
    ASSERT_EQ(file.error(), 0) << file.strError();
    file.write(samples.data(), static_cast<sf_count_t>(samples.size()));
  }
  /// What `tovin process` with these words makes of it, in the same format.
  Samples processed(std::vector<std::string> words) const {
    words.insert(words.begin() + 1, {in, out});
    words.insert(words.begin(), "process");
    const CommandLineResult run = runTovin(words);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");  // no progress bar without a terminal
    const SndfileHandle before(in);
    SndfileHandle file(out);
    EXPECT_EQ(file.format(), before.format());
    EXPECT_EQ(file.channels(), before.channels());
    EXPECT_EQ(file.samplerate(), before.samplerate());
    Samples samples(static_cast<size_t>(file.frames() * file.channels()));
    file.read(samples.data(), static_cast<sf_count_t>(samples.size()));
    return samples;
  }

  const std::string folder = testFolder();
  const std::string in = folder + "/in with 'quotes'.wav", out = folder + "/out.wav";
};

TEST_F(Process, DelaysAFileExactlyAndKeepsItsFormatAndLength) {
  const struct {
    int format, channels;
    size_t frames, delay;
  } rows[] = {{wav, 2, 10007, 777},
              {SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 2, 1024, 512},
              {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 1, 1025, 0},
              {wav, 2, 100, 44100},
              {wav, 1, 0, 5}};
  for (const auto& row : rows) {
    const auto channels = static_cast<size_t>(row.channels);
    Samples samples(row.frames * channels);
    std::mt19937 random(3);
    for (int& sample : samples) sample = static_cast<int>(random() & 0xFFFF0000u);
    write(row.format, row.channels, samples);
    const Samples heard = processed({"sdly", "--set", "0=" + std::to_string(row.delay)});
    samples.insert(samples.begin(), row.delay * channels, 0);
    samples.resize(row.frames * channels);
    EXPECT_TRUE(heard == samples) << row.frames;
  }
}

TEST_F(Process, LatencyIsTakenOutAndWhatIsTooLoudIsFlattened) {
  Samples click(5000);
  click[1000] = 1 << 28;
  write(wav, 1, click);
  const Samples heard = processed({"lmtr"});
  EXPECT_EQ(std::max_element(heard.begin(), heard.end()) - heard.begin(), 1000);
  EXPECT_EQ(processed({"dcmp", "--set", "0=20", "--set", "2=1", "--set", "6=40"})[1000], 0x7FFF0000);
}

TEST_F(Process, HalfAFileIsNotLeft) {
  write(wav, 2, Samples(200000));
  ChildProcess tovin({"sh", "-c", "trap '' XFSZ; ulimit -f 100; exec \"$0\" process sdly \"$1\" \"$2\"",
                      TOVIN_PROGRAM, in, out});
  EXPECT_EQ(tovin.wait(60), 1);
  EXPECT_NE(tovin.errors().find("out.wav"), std::string::npos) << tovin.errors();
  EXPECT_FALSE(fs::exists(out));
}

TEST_F(Process, NamesWhatIsWrongAndHowItShouldBe) {
  const std::string text = folder + "/text.wav", link = folder + "/link.wav";
  write(wav, 3, Samples(300));
  std::ofstream(text) << "no sound at all";
  fs::create_symlink(in, link);

  const struct {
    std::vector<std::string> arguments;
    int status;
    std::vector<std::string> said;
  } rows[] = {
      {{"process", "sdlx", in, out}, 2, {"EFFECT", "sdlx", "sdly"}},
      {{"process", "sdly", in, out, "--set", "0"}, 2, {"--set 0:", "ID=VALUE"}},
      {{"process", "sdly", in, out, "--set", "1=1"}, 2, {"--set 1=1", "no parameter \"1\""}},
      {{"process", "sdly", in, out, "--set", "0=44100.5"}, 2, {"44100.5", "0 to 44100 samples"}},
      {{"process", "sdly", in, link}, 2, {"OUT", "same file"}},
      {{"process", "sdly", folder + "/none.wav", out}, 1, {"none.wav", "No such file"}},
      {{"process", "sdly", text, out}, 1, {"text.wav"}},
      {{"process", "sdly", in, out}, 1, {"in with", "3 channels", "1 or 2"}},
      {{"snapshot", "lpas", "-o", folder + "/none/x.png"}, 1, {"none/x.png"}},
      {{"open", "lpas"}, 1, {":54321"}},
  };
  for (const auto& row : rows) {
    const auto run = runTovin(row.arguments);
    SCOPED_TRACE(run.errors);
    EXPECT_EQ(run.status, row.status) << &row - rows;
    for (const std::string& part : row.said) EXPECT_NE(run.errors.find(part), std::string::npos) << part;
    EXPECT_EQ(run.output, "");
  }
  EXPECT_FALSE(fs::exists(out));
}

}  // namespace
