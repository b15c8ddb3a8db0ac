#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ChildProcess.h"

/// What one run of the tovin program did.
struct CommandLineResult {
  int status;  // as ChildProcess::wait tells it
  std::string output, errors;
};

/// Runs the program itself, as a shell would, without a terminal or a display that is there.
inline CommandLineResult runTovin(std::vector<std::string> words) {
  words.insert(words.begin(), TOVIN_PROGRAM);
  ChildProcess tovin(words, {"DISPLAY=:54321"});
  tovin.closeInput();
  const int status = tovin.wait(60);
  return {status, tovin.output(), tovin.errors()};
}

/// A folder for the files of the test that runs, empty at first.
inline std::string testFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string folder = testing::TempDir() + "tovin_" + test->name();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder;
}
