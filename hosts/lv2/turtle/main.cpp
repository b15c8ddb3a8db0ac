// tovin_lv2_turtle FOLDER: writes the Turtle files of the plug-ins' folder there.

#include <cstdio>
#include <fstream>

#include "PluginKinds.h"
#include "PluginTurtle.h"
#include "RegisterEffects.h"
#include "TurtleText.h"

namespace {

constexpr ComponentDescription ours{FourCharCode("aufx"), 0, FourCharCode("Tovn")};

bool isListed(Component component) {
  ComponentDescription description;
  GetComponentInfo(component, &description, nullptr, nullptr, nullptr);
  return pluginKind(description.componentSubType);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: tovin_lv2_turtle FOLDER\n", stderr);
    return 2;
  }
  const std::string folder = std::string(arguments[1]) + "/";
  RegisterEffects();
  std::ofstream manifest(folder + "manifest.ttl"), presets(folder + PluginTurtle::presetsFile);
  manifest << turtlePrefixes;
  presets << turtlePrefixes;
  for (Component component = FindNextComponent(nullptr, &ours); component;
       component = FindNextComponent(component, &ours)) {
    if (!isListed(component)) {
      std::fprintf(stderr, "%s is missing in PluginKinds\n", effectCode(component).c_str());
      return 1;
    }
    const PluginTurtle turtle(component);
    turtle.writeManifest(manifest);
    turtle.writePresets(presets);
    std::ofstream description(folder + turtle.fileName());
    turtle.writeDescription(description);
    if (!description.flush()) manifest.setstate(std::ios::failbit);
  }
  if (manifest.flush() && presets.flush()) return 0;
  std::fprintf(stderr, "cannot write to %s\n", folder.c_str());
  return 1;
}
