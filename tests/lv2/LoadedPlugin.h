#pragma once

#include <lilv/lilv.h>
#include <lv2/urid/urid.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

/// What a host gives to plug-ins and editors.
extern LV2_URID_Map uridMap;

/// The built plug-ins' folder, read by lilv.
class PluginFolder {
 public:
  static PluginFolder& shared();

  LilvWorld* world() const { return world_.get(); }
  std::vector<std::string> codes() const;
  /// The plug-in of the effect with that code; null when there is none.
  const LilvPlugin* plugin(const std::string& code) const;
  bool isHardRealTime(const std::string& code) const;
  /// Of all ports, by index.
  std::vector<std::string> symbols(const std::string& code) const;

 private:
  PluginFolder();

  struct Free {
    void operator()(LilvWorld* world) const { lilv_world_free(world); }
  };
  std::unique_ptr<LilvWorld, Free> world_;
};

/// The symbol of a parameter's port, from its name.
std::string symbolOf(std::string name);

/// An instance of a plug-in with everything connected, control ports at their defaults.
class LoadedPlugin {
 public:
  using Samples = std::vector<std::vector<float>>;  // left and right

  /// Without an instance when the plug-in refuses.
  explicit LoadedPlugin(const std::string& code, double sampleRate = 44100);
  ~LoadedPlugin();
  LoadedPlugin(const LoadedPlugin&) = delete;
  LoadedPlugin& operator=(const LoadedPlugin&) = delete;

  bool isOpen() const { return instance_; }
  bool has(const std::string& symbol) const { return indexOf(symbol) < symbols_.size(); }
  float& control(const std::string& symbol) { return controls_.at(indexOf(symbol)); }
  /// Ports of parameters, which have a range.
  std::vector<std::string> parameters() const;
  float minimum(const std::string& symbol) const { return minima_[indexOf(symbol)]; }
  float maximum(const std::string& symbol) const { return maxima_[indexOf(symbol)]; }
  /// In frames, as its port says.
  uint32_t latency();

  /// Clears all history.
  void activate();
  /// Both may be the same memory. No allocation.
  void run(const float* const* input, float* const* output, uint32_t frames);
  /// All of the input, in blocks of these lengths by turns. Not in place unless said so.
  Samples render(const Samples& input, const std::vector<uint32_t>& blocks, bool inPlace = false);
  /// The next run gets the host's time position with that tempo.
  void tellTempo(float beatsPerMinute);

 private:
  /// A sequence of atoms, no better aligned than some hosts have it.
  struct TimePosition {
    explicit TimePosition(const float* beatsPerMinute);
    alignas(8) std::array<uint8_t, 260> memory;
    uint8_t* bytes() { return memory.data() + 4; }
  };

  size_t indexOf(const std::string& symbol) const;
  void giveTime(TimePosition& position);

  LilvInstance* instance_ = nullptr;
  bool active_ = false;
  std::vector<std::string> symbols_;
  std::vector<bool> isControlInput_;
  std::vector<float> controls_, minima_, maxima_;
  uint32_t time_ = 0;  // index of its port; beyond the others when there is none
  TimePosition nothing_{nullptr}, tempo_{nullptr};
};
