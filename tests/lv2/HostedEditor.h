#pragma once

#include <lv2/options/options.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <memory>
#include <utility>

#include "PluginPorts.h"
#include "Script.h"

/// An editor in a window of the host's, and what the host hears from it.
class HostedEditor {
 public:
  /// The object with the editors, loaded as long as somebody holds it, as each editor does.
  static std::shared_ptr<void> load();
  static bool isLoaded();

  /// `parent`: an X window. Throws std::runtime_error when the editor refuses.
  HostedEditor(const std::string& code, unsigned long parent, float scale = 1);
  ~HostedEditor() { close(); }
  HostedEditor(const HostedEditor&) = delete;
  HostedEditor& operator=(const HostedEditor&) = delete;

  /// In pixels, as it asked for.
  int width() const { return width_; }
  void close();
  /// The host's value of the port of a parameter or meter, and of one with another role.
  void set(unsigned parameter, float value) { setPort(ports_.findParameter(parameter).value(), value); }
  void set(PluginPort::Role role, float value) { setPort(ports_.find(role).value(), value); }
  /// Calls idle for that long, 30 times a second, at least once; whether the editor still wants to be.
  bool idle(double seconds);
  /// Since the last call: "begin 5" and "end 5" for a touch, "5 = -20" for writes in a row. Ports that are no
  /// parameter's are told by their symbol.
  Lines takeLog() { return std::exchange(log_, {}); }

 private:
  static void write(LV2UI_Controller self, uint32_t port, uint32_t size, uint32_t protocol, const void* data);
  static void touch(LV2UI_Feature_Handle self, uint32_t port, bool grabbed);
  static int resize(LV2UI_Feature_Handle self, int width, int height);
  std::string nameOf(uint32_t port) const;
  void setPort(uint32_t port, float value);

  const std::shared_ptr<void> object_ = load();
  PluginPorts ports_;
  const LV2UI_Descriptor* descriptor_;
  LV2UI_Handle editor_ = nullptr;
  int width_ = 0;
  Lines log_;
};
