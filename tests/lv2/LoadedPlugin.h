#pragma once

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// What a host gives to plug-ins and editors.
extern LV2_URID_Map uridMap;

/// The built plug-ins' folder, read by lilv.
LilvWorld* pluginWorld();
std::vector<std::string> pluginCodes();
/// Null when there is none.
const LilvPlugin* listedPlugin(const std::string& code);
/// Of all ports, by index.
std::vector<std::string> portSymbols(const std::string& code);
/// The symbol of a parameter's port, from its name.
std::string symbolOf(std::string name);

struct FreeNode {
  void operator()(LilvNode* node) const { lilv_node_free(node); }
};
using Node = std::unique_ptr<LilvNode, FreeNode>;
Node uriNode(const std::string& uri);

/// An active instance of a plug-in with everything connected, control ports at their defaults.
class LoadedPlugin {
 public:
  using Samples = std::vector<std::vector<float>>;  // left and right
  struct Port {
    float value, minimum, maximum;
  };

  explicit LoadedPlugin(const std::string& code, double sampleRate = 44100);
  ~LoadedPlugin();
  LoadedPlugin(const LoadedPlugin&) = delete;
  LoadedPlugin& operator=(const LoadedPlugin&) = delete;

  bool has(const std::string& symbol) const { return ports_.contains(symbol); }
  Port& port(const std::string& symbol) { return ports_.at(symbol); }
  float& control(const std::string& symbol) { return port(symbol).value; }
  /// Control inputs.
  const std::vector<std::string>& inputs() const { return inputs_; }
  /// In frames, as its port says.
  uint32_t latency();

  /// Of all history.
  void clear();
  /// Both may be the same memory. No allocation.
  void run(const float* const* input, float* const* output, uint32_t frames);
  /// All of the input, in blocks of these lengths by turns. Not in place unless said so.
  Samples render(const Samples& input, const std::vector<uint32_t>& blocks, bool inPlace = false);
  /// The next run gets the host's time position with that tempo.
  void tellTempo(float beatsPerMinute);

 private:
  /// A sequence of atoms, no better aligned than some hosts have it.
  LV2_Atom* time() { return reinterpret_cast<LV2_Atom*>(time_.data() + 4); }

  LilvInstance* instance_ = nullptr;
  std::map<std::string, Port> ports_;
  std::vector<std::string> inputs_;
  alignas(8) std::array<uint8_t, 260> time_ = {};
};
