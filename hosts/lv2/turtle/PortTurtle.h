#pragma once

#include <ostream>
#include <string>

#include "PluginPorts.h"

/// One port of the plug-in as a blank node, brackets included.
void writePortTurtle(std::ostream& out, const PluginPort& port, size_t index, const std::string& pluginUri);

/// The groups that ports belong to.
std::string inputGroupUri(const std::string& pluginUri);
std::string outputGroupUri(const std::string& pluginUri);
std::string bandGroupUri(const std::string& pluginUri, unsigned band);
