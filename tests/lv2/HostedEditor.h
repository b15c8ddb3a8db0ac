#pragma once

#include <lv2/options/options.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <string>
#include <vector>

/// The object with the editors, loaded as a host loads it.
class EditorObject {
 public:
  /// Null descriptors when it cannot be loaded.
  EditorObject();
  ~EditorObject() { unload(); }
  EditorObject(const EditorObject&) = delete;
  EditorObject& operator=(const EditorObject&) = delete;

  void unload();
  const LV2UI_Descriptor* editorOf(const std::string& code) const;
  static bool isInMemory();

 private:
  void* handle_;
};

/// An editor in a window of the host's, and what the host hears from it. Ports are named by their symbols.
class HostedEditor {
 public:
  /// `parent`: an X window. Not open when the editor refuses.
  HostedEditor(const EditorObject& object, const std::string& code, unsigned long parent, float scale = 1);
  ~HostedEditor() { close(); }
  HostedEditor(const HostedEditor&) = delete;
  HostedEditor& operator=(const HostedEditor&) = delete;

  bool isOpen() const { return editor_; }
  unsigned long window() const { return reinterpret_cast<unsigned long>(widget_); }
  int width() const { return width_; }
  int height() const { return height_; }
  void close();
  /// The host's value of a port.
  void set(const std::string& symbol, float value);
  /// Calls idle for that long, 30 times a second; whether the editor still wants to be.
  bool idle(double seconds);

  using Log = std::vector<std::string>;
  /// "+SYMBOL" begins a touch, "SYMBOL" is any number of writes in a row, "-SYMBOL" ends the touch.
  Log takeLog();
  /// As written last; 0 before.
  float written(const std::string& symbol) const;

 private:
  static void write(LV2UI_Controller self, uint32_t port, uint32_t size, uint32_t protocol, const void* data);
  static void touch(LV2UI_Feature_Handle self, uint32_t port, bool grabbed);
  static int resize(LV2UI_Feature_Handle self, int width, int height);
  void note(std::string entry);

  std::vector<std::string> symbols_;
  std::vector<float> written_;
  const LV2UI_Descriptor* descriptor_;
  LV2UI_Handle editor_ = nullptr;
  LV2UI_Widget widget_ = nullptr;
  int width_ = 0, height_ = 0;
  Log log_;
};
