#pragma once

#include <ostream>

#include "EffectInstance.h"
#include "PluginPorts.h"

struct PluginKind;

/// All that the Turtle files of the plug-ins' folder say about one effect.
class PluginTurtle {
 public:
  /// An effect that is listed in PluginKinds.
  explicit PluginTurtle(Component component);

  /// Name of the file that holds description(): "mcmp.ttl".
  std::string fileName() const;
  /// For manifest.ttl: that plug-in, editor and presets exist, and where they are.
  void writeManifest(std::ostream& out) const;
  /// The plug-in with its ports, and its editor.
  void writeDescription(std::ostream& out) const;
  /// The factory presets with the values of all parameters.
  void writePresets(std::ostream& out) const;

  static constexpr const char* presetsFile = "presets.ttl";

 private:
  void writePorts(std::ostream& out) const;
  void writeGroups(std::ostream& out) const;
  void writeEditor(std::ostream& out) const;
  std::string presetUri(const std::string& name) const;

  EffectInstance unit_;
  const PluginKind& kind_;
  std::string code_, name_, uri_, editorUri_;
  PluginPorts ports_;
};
