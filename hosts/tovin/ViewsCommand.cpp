#include "ViewsCommand.h"

#include <iostream>
#include <memory>

#include "EditorBundle.h"
#include "EditorWindow.h"
#include "EffectArgument.h"
#include "EffectInstance.h"
#include "NSWindow.h"
#include "NumberText.h"
#include "OffscreenDisplay.h"

namespace {

/// The editor's outlet that holds the view; "-" for none.
std::string outletOf(NSView& editor, const NSView& view) {
  for (const Class::Outlet& outlet : editor.isa().outlets())
    if (outlet.connected(editor) == &view) return outlet.name;
  return "-";
}

void print(NSView& editor, const NSView& view, size_t depth) {
  const NSRect inWindow = view.convertRect_toView(view.bounds(), nullptr);
  const float top = NSHeight(editor.frame()) - NSMaxY(inWindow);
  std::cout << std::string(2 * depth, ' ') << view.isa().name() << ' ' << outletOf(editor, view);
  for (const float number : {NSMinX(inWindow), top, NSWidth(inWindow), NSHeight(inWindow)})
    std::cout << ' ' << foundation::exactText(number);
  std::cout << '\n';
  for (const auto& subview : view.subviews()) print(editor, *subview, depth + 1);
}

ExitStatus run(const std::string& argument) {
  std::string error;
  const Component component = effectFromArgument(argument, error);
  if (!component) return report(exitWrongArguments, error);
  const auto bundle = EditorBundle::load(error);
  if (!bundle) return report(exitFailed, error);
  OffscreenDisplay display;
  const EffectInstance effect = openEffect(component);
  const auto editor = bundle->editorFor(effect.get());
  if (!editor) return report(exitFailed, argument + ": there is no editor for this effect");
  const auto window = windowForEditor(display, editor, argument);
  print(*editor, *editor, 0);
  return exitOk;
}

}  // namespace

Command viewsCommand(CLI::App& program) {
  CLI::App* app = program.add_subcommand(
      "views",
      "Print the editor's views, one a line, indented by depth: CLASS OUTLET X Y WIDTH HEIGHT. Frames are "
      "points in the window, the origin at its top left.");
  const auto effect = std::make_shared<std::string>();
  app->add_option("EFFECT", *effect, effectArgumentHelp)->required();
  return {app, [effect] { return run(*effect); }};
}
