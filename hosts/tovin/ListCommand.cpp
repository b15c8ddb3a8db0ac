#include "ListCommand.h"

#include <cstdio>
#include <iostream>
#include <vector>

#include "EditorBundle.h"
#include "EffectInstance.h"
#include "NSView.h"
#include "TextTable.h"

namespace {

std::string versionText(SInt32 version) {
  return std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 255) + "." +
         std::to_string(version & 255);
}

ExitStatus run() {
  std::string error;
  const auto bundle = EditorBundle::load(error);
  if (!bundle) return report(exitFailed, error);
  std::vector<std::vector<std::string>> rows;
  for (Component c : registeredEffects()) {
    const EffectInstance effect = openEffect(c);
    if (!effect) return report(exitFailed, effectCode(c) + ": the effect cannot be opened");
    const auto editor = bundle->editorFor(effect.get());
    rows.push_back({effectCode(c), effectName(c), versionText(GetComponentVersion(effect.get())),
                    editor ? editor->isa().name() : "-"});
  }
  std::cout << textTable(rows, {false, false, false, false});
  return exitOk;
}

}  // namespace

Command listCommand(CLI::App& program) {
  return {
      program.add_subcommand("list", "List the effects: code, name, version and the class of the editor."),
      run};
}
