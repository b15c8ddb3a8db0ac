#include "PluginTurtle.h"

#include <algorithm>

#include "EffectPresets.h"
#include "PluginKinds.h"
#include "PortTurtle.h"
#include "TurtleText.h"

namespace {

constexpr const char* soundObject = "tovin_lv2_dsp.so";
constexpr const char* editorObject = "tovin_lv2_ui.so";
constexpr const char* project = "urn:tovin:lv2";

OSType subtypeOf(Component component) {
  ComponentDescription description;
  GetComponentInfo(component, &description, nullptr, nullptr, nullptr);
  return description.componentSubType;
}

}  // namespace

PluginTurtle::PluginTurtle(Component component)
    : unit_(openEffect(component)),
      kind_(*pluginKind(subtypeOf(component))),
      code_(effectCode(component)),
      name_(pluginName(component)),
      uri_(pluginUri(component)),
      editorUri_(pluginEditorUri(component)),
      ports_(unit_.get()) {}

std::string PluginTurtle::fileName() const {
  return code_ + ".ttl";
}

std::string PluginTurtle::presetUri(const std::string& name) const {
  return uri_ + "#preset_" + symbolFromName(name);
}

void PluginTurtle::writeManifest(std::ostream& out) const {
  out << "\n"
      << turtleAddress(uri_) << "\n  a lv2:Plugin ;\n  lv2:binary " << turtleAddress(soundObject)
      << " ;\n  rdfs:seeAlso " << turtleAddress(fileName()) << " .\n\n"
      << turtleAddress(editorUri_) << "\n  a ui:X11UI ;\n  lv2:binary " << turtleAddress(editorObject)
      << " ;\n  rdfs:seeAlso " << turtleAddress(fileName()) << " .\n";
  for (const std::string& preset : effectPresets(unit_.get()))
    out << "\n"
        << turtleAddress(presetUri(preset)) << "\n  a pset:Preset ;\n  lv2:appliesTo " << turtleAddress(uri_)
        << " ;\n  rdfs:label " << turtleString(preset) << " ;\n  rdfs:seeAlso " << turtleAddress(presetsFile)
        << " .\n";
}

void PluginTurtle::writeDescription(std::ostream& out) const {
  out << turtlePrefixes << "\n"
      << turtleAddress(project) << "\n  a doap:Project ;\n  doap:name \"Tovin\" ;\n"
      << "  doap:license <https://spdx.org/licenses/GPL-3.0-or-later> .\n\n"
      << turtleAddress(uri_) << "\n  a lv2:Plugin , " << kind_.classes << " ;\n  lv2:project "
      << turtleAddress(project) << " ;\n  doap:name " << turtleString("Tovin " + name_)
      << " ;\n  doap:license <https://spdx.org/licenses/GPL-3.0-or-later> ;\n  doap:shortdesc "
      << turtleString(kind_.summary) << " ;\n  rdfs:comment " << turtleString(kind_.summary)
      << " ;\n  lv2:minorVersion " << TOVIN_VERSION_MINOR << " ;\n  lv2:microVersion " << TOVIN_VERSION_PATCH
      << " ;\n";
  if (kind_.isHardRealTime) out << "  lv2:optionalFeature lv2:hardRTCapable ;\n";
  if (kind_.followsTempo) out << "  lv2:requiredFeature urid:map ;\n";
  out << "  pg:mainInput " << turtleAddress(inputGroupUri(uri_)) << " ;\n  pg:mainOutput "
      << turtleAddress(outputGroupUri(uri_)) << " ;\n  ui:ui " << turtleAddress(editorUri_) << " ;\n";
  writePorts(out);
  writeGroups(out);
  writeEditor(out);
}

void PluginTurtle::writePorts(std::ostream& out) const {
  for (size_t i = 0; i < ports_.size(); ++i) {
    out << (i == 0 ? "  lv2:port " : " , ");
    writePortTurtle(out, ports_[i], i, uri_);
  }
  out << " .\n";
}

void PluginTurtle::writeGroups(std::ostream& out) const {
  const auto write = [&](const std::string& uri, const char* classes, const std::string& symbol,
                         const std::string& name) {
    out << "\n"
        << turtleAddress(uri) << "\n  a " << classes << " ;\n  lv2:symbol " << turtleString(symbol)
        << " ;\n  lv2:name " << turtleString(name) << " .\n";
  };
  write(inputGroupUri(uri_), "pg:StereoGroup , pg:InputGroup", "in", "In");
  write(outputGroupUri(uri_), "pg:StereoGroup , pg:OutputGroup", "out", "Out");
  unsigned bands = 0;
  for (const PluginPort& port : ports_.all()) bands = std::max(bands, port.band);
  for (unsigned band = 1; band <= bands; ++band) {
    const std::string number = std::to_string(band);
    write(bandGroupUri(uri_, band), "pg:Group", "band_" + number, "Band " + number);
  }
}

void PluginTurtle::writeEditor(std::ostream& out) const {
  out << "\n"
      << turtleAddress(editorUri_)
      << "\n  lv2:requiredFeature ui:idleInterface , ui:parent , urid:map ;\n"
         "  lv2:optionalFeature ui:resize , ui:touch , opts:options ;\n"
         "  opts:supportedOption ui:scaleFactor , param:sampleRate ;\n"
         "  lv2:extensionData ui:idleInterface";
  for (size_t i = 0; i < ports_.size(); ++i)
    if (ports_[i].role == PluginPort::meter || ports_[i].role == PluginPort::tempo)
      out << " ;\n  ui:portNotification [\n    ui:plugin " << turtleAddress(uri_) << " ;\n    lv2:symbol "
          << turtleString(ports_[i].symbol) << " ;\n    ui:portIndex " << i
          << " ;\n    ui:protocol ui:floatProtocol\n  ]";
  out << " .\n";
}

void PluginTurtle::writePresets(std::ostream& out) const {
  const std::vector<std::string> names = effectPresets(unit_.get());
  for (size_t p = 0; p < names.size(); ++p) {
    chooseEffectPreset(unit_.get(), static_cast<SInt32>(p));
    out << "\n"
        << turtleAddress(presetUri(names[p])) << "\n  a pset:Preset ;\n  lv2:appliesTo "
        << turtleAddress(uri_) << " ;\n  rdfs:label " << turtleString(names[p]);
    const char* before = " ;\n  lv2:port ";
    for (const PluginPort& port : ports_.all()) {
      if (port.role != PluginPort::parameter) continue;
      Float32 value = 0;
      AudioUnitGetParameter(unit_.get(), port.parameterID, kAudioUnitScope_Global, 0, &value);
      out << before << "[ lv2:symbol " << turtleString(port.symbol) << " ; pset:value " << turtleNumber(value)
          << " ]";
      before = " , ";
    }
    out << " .\n";
  }
}
