#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

/// What the program leaves to its shell.
enum ExitStatus { exitOk = 0, exitFailed = 1, exitWrongArguments = 2 };

/// Says on standard error what went wrong: the argument or file that it is about, what is wrong with it and
/// what was expected. The answer is `status`.
ExitStatus report(ExitStatus status, const std::string& message);

/// One subcommand: its arguments are declared when it is made, `run` is called when it was asked for and
/// they could be read. A command reports its own errors.
struct Command {
  CLI::App* app;  // owned by the program's CLI::App
  std::function<ExitStatus()> run;
};
