#pragma once

#include <CLI/CLI.hpp>
#include <functional>

/// What the program leaves to its shell.
enum ExitStatus { exitOk = 0, exitFailed = 1, exitWrongArguments = 2 };

/// One subcommand: its arguments are declared when it is made, `run` is called when it was asked for and
/// they could be read. A command reports its own errors on standard error, each beginning with "tovin: "
/// and the argument or file that it is about.
struct Command {
  CLI::App* app;  // owned by the program's CLI::App
  std::function<ExitStatus()> run;
};
