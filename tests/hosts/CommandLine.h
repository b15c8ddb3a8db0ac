#pragma once

#include <string>
#include <vector>

/// What one run of the tovin program did.
struct CommandLineResult {
  int status = -1;  // as ChildProcess::wait tells it
  std::string output;
  std::string errors;
};

/// Runs the program itself, as a shell would, without a terminal.
CommandLineResult runTovin(const std::vector<std::string>& arguments);

/// A folder for the files of the test that runs, empty at first.
std::string testFolder();
