#include "PluginPorts.h"

#include <algorithm>
#include <map>

#include "AudioUnitProperties.h"
#include "EffectParameters.h"
#include "HostTempo.h"
#include "PluginKinds.h"

namespace {

constexpr Float32 longestLatency = 384000;  // a second at the highest rate

// Not those of <cctype>, which ask the host's locale.
bool isLower(char c) {
  return c >= 'a' && c <= 'z';
}
bool isUpper(char c) {
  return c >= 'A' && c <= 'Z';
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr char toOtherCase = 'a' ^ 'A';

std::optional<UInt32> renderQualityOf(AudioUnit unit) {
  UInt32 quality = 0;
  UInt32 size = sizeof quality;
  if (AudioUnitGetProperty(unit, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                           &size))
    return std::nullopt;
  return quality;
}

PluginPort renderQualityPort(UInt32 quality) {
  return {.role = PluginPort::renderQuality,
          .symbol = "render_quality",
          .name = "Render quality",
          .minimum = kRenderQuality_Min,
          .maximum = kRenderQuality_Max,
          .defaultValue = static_cast<Float32>(quality),
          .isInteger = true,
          .scalePoints = {{"Maximum", kRenderQuality_Max},
                          {"High", kRenderQuality_High},
                          {"Medium", kRenderQuality_Medium},
                          {"Low", kRenderQuality_Low},
                          {"Minimum", kRenderQuality_Min}}};
}

PluginPort parameterPort(const EffectParameter& parameter) {
  PluginPort port{.role = parameter.isWritable() ? PluginPort::parameter : PluginPort::meter,
                  .symbol = symbolFromName(parameter.name),
                  .name = parameter.name,
                  .parameterID = parameter.id,
                  .minimum = parameter.minValue,
                  .maximum = parameter.maxValue,
                  .defaultValue = parameter.defaultValue,
                  .unit = parameter.unit};
  if (isLower(port.name[0])) port.name[0] ^= toOtherCase;
  port.isLogarithmic = parameter.flags & kAudioUnitParameterFlag_DisplayLogarithmic && port.minimum > 0;
  port.isInteger = !parameter.valueNames.empty() || parameter.unit == "samples";
  for (size_t i = 0; i < parameter.valueNames.size(); ++i)
    port.scalePoints.push_back({parameter.valueNames[i], port.minimum + static_cast<Float32>(i)});
  return port;
}

/// The number that a name ends in, and the name without it; 0 when there is none.
std::pair<std::string, unsigned> splitNumber(const std::string& name) {
  const size_t digits = name.find_last_not_of("0123456789") + 1;
  if (digits == name.size() || digits < 2 || name[digits - 1] != ' ') return {name, 0};
  return {name.substr(0, digits - 1), static_cast<unsigned>(std::stoul(name.substr(digits)))};
}

}  // namespace

bool PluginPort::isOutput() const {
  return role == outLeft || role == outRight || role == latency || role == tempo || role == meter;
}

PluginPorts::PluginPorts(AudioUnit unit) {
  ComponentDescription description;
  GetComponentInfo(unit, &description, nullptr, nullptr, nullptr);
  const PluginKind* kind = pluginKind(description.componentSubType);

  add({.role = PluginPort::inLeft, .symbol = "in_left", .name = "In left"});
  add({.role = PluginPort::inRight, .symbol = "in_right", .name = "In right"});
  add({.role = PluginPort::outLeft, .symbol = "out_left", .name = "Out left"});
  add({.role = PluginPort::outRight, .symbol = "out_right", .name = "Out right"});
  add({.role = PluginPort::enabled,
       .symbol = "enabled",
       .name = "Enabled",
       .defaultValue = 1,
       .isToggled = true});
  if (kind && kind->hasLatency)
    add({.role = PluginPort::latency,
         .symbol = "latency",
         .name = "Latency",
         .maximum = longestLatency,
         .unit = "samples",
         .isInteger = true});
  if (kind && kind->followsTempo) {
    add({.role = PluginPort::timePosition, .symbol = "time_position", .name = "Time position"});
    add({.role = PluginPort::tempo,
         .symbol = "tempo",
         .name = "Tempo",
         .maximum = static_cast<Float32>(fastestTempo),
         .unit = "BPM"});
  }
  if (const auto quality = renderQualityOf(unit)) add(renderQualityPort(*quality));
  addParameters(unit, PluginPort::meter);
  addParameters(unit, PluginPort::parameter);
  assignBands();
}

void PluginPorts::addParameters(AudioUnit unit, PluginPort::Role role) {
  for (const EffectParameter& parameter : effectParameters(unit))
    if (PluginPort port = parameterPort(parameter); port.role == role) add(std::move(port));
}

void PluginPorts::add(PluginPort port) {
  const std::string wanted = port.symbol;
  const auto isTaken = [&](const PluginPort& other) { return other.symbol == port.symbol; };
  for (int n = 2; std::any_of(ports_.begin(), ports_.end(), isTaken); ++n)
    port.symbol = wanted + "_" + std::to_string(n);
  ports_.push_back(std::move(port));
}

// Of the names that differ only in their number those that have one for each band. The crossovers between
// bands are one fewer.
void PluginPorts::assignBands() {
  std::map<std::string, unsigned> families;
  unsigned bands = 0;
  for (const PluginPort& port : ports_) {
    const auto [family, number] = splitNumber(port.name);
    families[family] = std::max(families[family], number);
    bands = std::max(bands, number);
  }
  for (PluginPort& port : ports_) {
    const auto [family, number] = splitNumber(port.name);
    if (families[family] == bands) port.band = number;
  }
}

std::optional<uint32_t> PluginPorts::find(PluginPort::Role role) const {
  for (size_t i = 0; i < ports_.size(); ++i)
    if (ports_[i].role == role) return static_cast<uint32_t>(i);
  return std::nullopt;
}

std::optional<uint32_t> PluginPorts::findParameter(AudioUnitParameterID id) const {
  for (size_t i = 0; i < ports_.size(); ++i)
    if (ports_[i].role >= PluginPort::meter && ports_[i].parameterID == id) return static_cast<uint32_t>(i);
  return std::nullopt;
}

std::string symbolFromName(const std::string& name) {
  std::string symbol;
  for (const char c : name) {
    if (isLower(c) || isDigit(c))
      symbol += c;
    else if (isUpper(c))
      symbol += static_cast<char>(c ^ toOtherCase);
    else if (!symbol.empty() && symbol.back() != '_')
      symbol += '_';
  }
  while (!symbol.empty() && symbol.back() == '_') symbol.pop_back();
  return symbol.empty() || isDigit(symbol[0]) ? "p_" + symbol : symbol;
}
