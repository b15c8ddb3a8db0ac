#pragma once

#include <lilv/lilv.h>
#include <lv2/urid/urid.h>

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

 private:
  PluginFolder();

  struct Free {
    void operator()(LilvWorld* world) const { lilv_world_free(world); }
  };
  std::unique_ptr<LilvWorld, Free> world_;
};

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
  /// Symbols of all ports, by index; and one's index, or the number of ports.
  const std::vector<std::string>& symbols() const { return symbols_; }
  size_t indexOf(const std::string& symbol) const;
  bool has(const std::string& symbol) const { return indexOf(symbol) < symbols_.size(); }
  bool isControlInput(size_t index) const { return isControlInput_[index]; }
  float& control(size_t index) { return controls_[index]; }
  float& control(const std::string& symbol);
  float minimum(size_t index) const { return minima_[index]; }
  float maximum(size_t index) const { return maxima_[index]; }

  /// Clears all history.
  void activate();
  /// Both may be the same memory. No allocation.
  void run(const float* const* input, float* const* output, uint32_t frames);
  /// All of the input, in blocks of these lengths by turns. Not in place unless said so.
  Samples render(const Samples& input, const std::vector<uint32_t>& blocks, bool inPlace = false);
  /// The next run gets the host's time position with that tempo.
  void tellTempo(float beatsPerMinute);

 private:
  struct TimePosition;

  LilvInstance* instance_ = nullptr;
  bool active_ = false;
  std::vector<std::string> symbols_;
  std::vector<char> isControlInput_;
  std::vector<float> controls_, minima_, maxima_;
  std::unique_ptr<TimePosition> time_;
};
