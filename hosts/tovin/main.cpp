#include <iostream>

#include "Command.h"
#include "ListCommand.h"
#include "MeasureCommand.h"
#include "OpenCommand.h"
#include "ParamsCommand.h"
#include "ProcessCommand.h"
#include "RegisterEffects.h"
#include "SnapshotCommand.h"
#include "ViewsCommand.h"

int main(int argc, char** argv) {
  RegisterEffects();

  CLI::App app("Audio effects, their sound and their editors.", "tovin");
  app.require_subcommand(0, 1);  // with none the program says below what there is
  const Command commands[] = {
      listCommand(app),    paramsCommand(app), snapshotCommand(app), openCommand(app),
      processCommand(app), viewsCommand(app),  measureCommand(app),
  };

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? exitOk : exitWrongArguments;  // asking for help is no error
  }
  for (const Command& command : commands)
    if (command.app->parsed()) return command.run();
  std::cerr << app.help();
  return exitWrongArguments;
}
