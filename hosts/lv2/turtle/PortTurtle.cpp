#include "PortTurtle.h"

#include <string_view>
#include <utility>

#include "TurtleText.h"

namespace {

const char* typesOf(PluginPort::Role role) {
  switch (role) {
    case PluginPort::inLeft:
    case PluginPort::inRight:
      return "lv2:InputPort , lv2:AudioPort";
    case PluginPort::outLeft:
    case PluginPort::outRight:
      return "lv2:OutputPort , lv2:AudioPort";
    case PluginPort::timePosition:
      return "lv2:InputPort , atom:AtomPort";
    case PluginPort::latency:
    case PluginPort::tempo:
    case PluginPort::meter:
      return "lv2:OutputPort , lv2:ControlPort";
    case PluginPort::enabled:
    case PluginPort::renderQuality:
    case PluginPort::parameter:
      break;
  }
  return "lv2:InputPort , lv2:ControlPort";
}

const char* designationOf(PluginPort::Role role) {
  switch (role) {
    case PluginPort::inLeft:
    case PluginPort::outLeft:
      return "pg:left";
    case PluginPort::inRight:
    case PluginPort::outRight:
      return "pg:right";
    case PluginPort::enabled:
      return "lv2:enabled";
    case PluginPort::latency:
      return "lv2:latency";
    case PluginPort::timePosition:
      return "lv2:control";
    default:
      return nullptr;
  }
}

const char* unitOf(const std::string& text) {
  constexpr std::pair<std::string_view, const char*> units[] = {
      {"%", "units:pc"},    {"s", "units:s"},         {"ms", "units:ms"},         {"samples", "units:frame"},
      {"x", "units:coef"},  {"Hz", "units:hz"},       {"cents", "units:cent"},    {"dB", "units:db"},
      {"BPM", "units:bpm"}, {"octaves", "units:oct"}, {"degrees", "units:degree"}};
  for (const auto& [known, unit] : units)
    if (text == known) return unit;
  return nullptr;
}

std::string propertiesOf(const PluginPort& port) {
  std::string all;
  const auto add = [&](bool holds, const char* property) {
    if (holds) all += (all.empty() ? "" : " , ") + std::string(property);
  };
  add(port.isToggled, "lv2:toggled");
  add(port.isInteger, "lv2:integer");
  add(!port.scalePoints.empty(), "lv2:enumeration");
  add(port.isLogarithmic, "pprops:logarithmic");
  add(port.role == PluginPort::latency, "lv2:reportsLatency");
  add(port.role == PluginPort::latency || port.role == PluginPort::tempo, "pprops:notOnGUI");
  // A change of it is a new engine, faded in.
  add(port.role == PluginPort::renderQuality, "pprops:notAutomatic , pprops:expensive");
  return all;
}

std::string groupOf(const PluginPort& port, const std::string& pluginUri) {
  if (port.isAudio()) return port.isOutput() ? outputGroupUri(pluginUri) : inputGroupUri(pluginUri);
  return port.band > 0 ? bandGroupUri(pluginUri, port.band) : "";
}

}  // namespace

std::string inputGroupUri(const std::string& pluginUri) {
  return pluginUri + "#in";
}

std::string outputGroupUri(const std::string& pluginUri) {
  return pluginUri + "#out";
}

std::string bandGroupUri(const std::string& pluginUri, unsigned band) {
  return pluginUri + "#band_" + std::to_string(band);
}

void writePortTurtle(std::ostream& out, const PluginPort& port, size_t index, const std::string& pluginUri) {
  const auto line = [&](const char* predicate, const std::string& object) {
    if (!object.empty()) out << " ;\n    " << predicate << " " << object;
  };
  const auto text = [](const char* value) { return std::string(value ? value : ""); };
  out << "[\n    a " << typesOf(port.role);
  line("lv2:index", std::to_string(index));
  line("lv2:symbol", turtleString(port.symbol));
  line("lv2:name", turtleString(port.name));
  line("lv2:designation", text(designationOf(port.role)));
  if (const std::string group = groupOf(port, pluginUri); !group.empty())
    line("pg:group", turtleAddress(group));
  if (port.role == PluginPort::timePosition) {
    line("atom:bufferType", "atom:Sequence");
    line("atom:supports", "time:Position");
  }
  if (port.isControl()) {
    if (!port.isOutput()) line("lv2:default", turtleNumber(port.defaultValue));
    line("lv2:minimum", turtleNumber(port.minimum));
    line("lv2:maximum", turtleNumber(port.maximum));
    line("units:unit", text(unitOf(port.unit)));
    line("lv2:portProperty", propertiesOf(port));
  }
  for (const PluginPort::ScalePoint& point : port.scalePoints)
    line("lv2:scalePoint",
         "[ rdfs:label " + turtleString(point.label) + " ; rdf:value " + turtleNumber(point.value) + " ]");
  out << "\n  ]";
}
