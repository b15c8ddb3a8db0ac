#include "CommandLine.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

std::string contents(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

}  // namespace

std::string testFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const fs::path folder = fs::path(testing::TempDir()) / (std::string("tovin_") + test->name());
  fs::remove_all(folder);
  fs::create_directories(folder);
  return folder.string();
}

CommandLineResult runTovin(const std::vector<std::string>& arguments) {
  const fs::path folder = fs::path(testing::TempDir());
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const fs::path out = folder / (std::string(test->name()) + ".stdout");
  const fs::path err = folder / (std::string(test->name()) + ".stderr");
  std::string line = quoted(TOVIN_PROGRAM);
  for (const std::string& argument : arguments) line += " " + quoted(argument);
  line += " >" + quoted(out.string()) + " 2>" + quoted(err.string()) + " </dev/null";
  const int status = std::system(line.c_str());
  CommandLineResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out), contents(err)};
  fs::remove(out);
  fs::remove(err);
  return result;
}
