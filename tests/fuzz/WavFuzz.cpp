// `tovin process` with any file: it is processed as long as it is, or a message says what is wrong.

#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sndfile.hh>
#include <sstream>

#include "Must.h"
#include "ProcessCommand.h"
#include "RegisterEffects.h"

namespace fs = std::filesystem;

namespace {

constexpr std::array effects{"sdly", "dely", "lmtr", "dcmp"};

/// A folder that goes with the process.
struct Scratch {
  fs::path folder = fs::temp_directory_path() / ("tovin-fuzz-" + std::to_string(getpid()));
  std::string in = (folder / "in.wav").string();
  std::string out = (folder / "out.wav").string();
  Scratch() { fs::create_directories(folder); }
  ~Scratch() { fs::remove_all(folder); }
};

/// What it said on standard error is in `errors`.
ExitStatus process(const std::string& effect, const Scratch& files, std::string& errors) {
  CLI::App program;
  const Command command = processCommand(program);
  program.parse({files.out, files.in, effect, "process"});  // from the back
  std::ostringstream said;
  std::streambuf* const before = std::cerr.rdbuf(said.rdbuf());
  const ExitStatus status = command.run();
  std::cerr.rdbuf(before);
  errors = said.str();
  return status;
}

void checkOutput(const Scratch& files) {
  SndfileHandle in(files.in);
  SndfileHandle out(files.out);
  must(out.error() == 0 && in.error() == 0, "the output can be read");
  must(out.channels() == in.channels() && out.samplerate() == in.samplerate(), "the format is kept");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Scratch files;
  static const bool once = (RegisterEffects(), true);
  static_cast<void>(once);
  std::ofstream(files.in, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  const size_t choice = size == 0 ? 0 : data[size - 1];  // so that an input is a WAV file and no more
  std::string errors;
  const ExitStatus status = process(effects[choice % effects.size()], files, errors);
  if (status == exitOk) {
    must(errors.empty(), "nothing is said when all went well");
    checkOutput(files);
    fs::remove(files.out);
  } else {
    must(status == exitFailed && errors.starts_with("tovin: " + files.folder.string()),
         "the file is named that is wrong: " + errors);
    must(!fs::exists(files.out), "no output is left of a failure");
  }
  return 0;
}
