#include "CommandLine.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ChildProcess.h"

namespace fs = std::filesystem;

std::string testFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const fs::path folder = fs::path(testing::TempDir()) / (std::string("tovin_") + test->name());
  fs::remove_all(folder);
  fs::create_directories(folder);
  return folder.string();
}

CommandLineResult runTovin(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{TOVIN_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  ChildProcess tovin(command);
  tovin.closeInput();
  const int status = tovin.wait(60);
  return {status, tovin.output(), tovin.errors()};
}
