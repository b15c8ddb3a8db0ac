#pragma once

#include <lv2/options/options.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <string>
#include <vector>

#include "PluginPorts.h"

/// The object with the editors, loaded as a host loads it.
class EditorObject {
 public:
  /// Null descriptors when it cannot be loaded.
  EditorObject();
  ~EditorObject();
  EditorObject(const EditorObject&) = delete;
  EditorObject& operator=(const EditorObject&) = delete;

  const LV2UI_Descriptor* editorOf(const std::string& code) const;
  static bool isInMemory();

 private:
  void* handle_;
};

/// An editor in a window of the host's, and what the host hears from it.
class HostedEditor {
 public:
  /// `parent`: an X window. Throws std::runtime_error when the editor refuses.
  HostedEditor(const EditorObject& object, const std::string& code, unsigned long parent, float scale = 1);
  ~HostedEditor() { close(); }
  HostedEditor(const HostedEditor&) = delete;
  HostedEditor& operator=(const HostedEditor&) = delete;

  /// In pixels, as it asked for.
  int width() const { return width_; }
  int height() const { return height_; }
  void close();
  /// The host's value of the port of a parameter or meter, and of one with another role.
  void set(unsigned parameter, float value);
  void set(PluginPort::Role role, float value);
  /// Calls idle for that long, 30 times a second, at least once; whether the editor still wants to be.
  bool idle(double seconds);
  /// Since the last call: "begin 5" and "end 5" for a touch, "5 = -20" for writes in a row. Ports that are no
  /// parameter's are told by their symbol.
  std::vector<std::string> takeLog();

 private:
  static void write(LV2UI_Controller self, uint32_t port, uint32_t size, uint32_t protocol, const void* data);
  static void touch(LV2UI_Feature_Handle self, uint32_t port, bool grabbed);
  static int resize(LV2UI_Feature_Handle self, int width, int height);
  std::string nameOf(uint32_t port) const;
  void setPort(uint32_t port, float value);

  PluginPorts ports_;
  const LV2UI_Descriptor* descriptor_;
  LV2UI_Handle editor_ = nullptr;
  LV2UI_Widget widget_ = nullptr;
  int width_ = 0, height_ = 0;
  std::vector<std::string> log_;
};
