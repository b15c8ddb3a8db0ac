#pragma once

#include <optional>
#include <string>
#include <vector>

#include "AudioUnit.h"

/// One port of a plug-in. All text is UTF-8.
struct PluginPort {
  enum Role {
    inLeft,  // the first five have these indices in every plug-in
    inRight,
    outLeft,
    outRight,
    enabled,        // input, 0 or 1
    latency,        // output, frames that a host should compensate
    timePosition,   // atom input, the host's time line
    tempo,          // output, beats per minute as the host last told it; 0 before
    renderQuality,  // input, one of the five scale points
    meter,          // output, a read-only parameter
    parameter,      // input, a parameter
  };
  struct ScalePoint {
    std::string label;
    Float32 value;
  };

  Role role;
  std::string symbol;  // a C identifier, unique in the plug-in
  std::string name;
  AudioUnitParameterID parameterID = 0;  // of meters and parameters
  Float32 minimum = 0;                   // these three of all but audio and time position
  Float32 maximum = 1;
  Float32 defaultValue = 0;
  std::string unit = {};  // short, as AUUnitText says it; may be empty
  bool isLogarithmic = false;
  bool isInteger = false;
  bool isToggled = false;
  std::vector<ScalePoint> scalePoints = {};  // when there are any, no other values make sense
  unsigned band = 0;                         // of an effect with bands, from 1; 0: belongs to none

  bool isAudio() const { return role <= outRight; }
  bool isControl() const { return !isAudio() && role != timePosition; }
  bool isOutput() const;
};

/// The ports of one effect as a plug-in: what its listing, its sound and its editor agree on. All comes from
/// the effect's own description of its parameters.
///
/// What projects keep are symbols and, some hosts, indices. Parameters come last and in ascending order of
/// their identifiers, so one that is added to an effect later, with a new highest identifier, moves none.
class PluginPorts {
 public:
  /// The instance is only asked, and need not be initialised.
  explicit PluginPorts(AudioUnit unit);

  /// A port's index is its place here.
  const std::vector<PluginPort>& all() const { return ports_; }
  size_t size() const { return ports_.size(); }
  const PluginPort& operator[](size_t index) const { return ports_[index]; }

  /// The port in that role, or nothing. Not for meters and parameters.
  std::optional<uint32_t> find(PluginPort::Role role) const;
  /// The meter or parameter with that identifier, or nothing.
  std::optional<uint32_t> findParameter(AudioUnitParameterID id) const;

 private:
  void add(PluginPort port);
  void addParameters(AudioUnit unit, PluginPort::Role role);
  void assignBands();

  std::vector<PluginPort> ports_;
};

/// Words as a C identifier in lower case: "dry_wet_mix" for "dry/wet mix".
std::string symbolFromName(const std::string& name);
