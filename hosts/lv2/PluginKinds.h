#pragma once

#include <string>

#include "Components.h"

/// What a plug-in's listing says about an effect and the effect itself cannot tell.
struct PluginKind {
  OSType subtype;
  const char* classes;  // as in a Turtle object list
  const char* summary;  // one sentence
  bool hasLatency = false;
  bool followsTempo = false;  // its editor or sound wants the host's beats per minute
  // False: something in run() may allocate. (Rubber Band does after a change of the pitch.)
  bool isHardRealTime = true;
};

/// Null for a subtype that is no plug-in.
const PluginKind* pluginKind(OSType subtype);

/// "urn:tovin:lv2:" and the four-letter code.
std::string pluginUri(Component component);
/// That of the plug-in's editor.
std::string pluginEditorUri(Component component);
/// As a person reads it: "Multiband Compressor" for the component "Tovin: AUMultibandCompressor".
std::string pluginName(Component component);
