#pragma once

#include <memory>
#include <string>

#include "Display.h"
#include "EditorBundle.h"
#include "EditorFeatures.h"
#include "EffectInstance.h"
#include "NSRunLoop.h"
#include "PortMirror.h"

class NSWindow;

/// The open editor of one plug-in, in a window of the host's. It shows an effect of its own, which mirrors
/// the plug-in's ports. All open editors share one run loop, which the host pumps through any of them, and
/// those of one scale a connection to the display. All of it on the host's interface thread.
class PluginEditor {
 public:
  /// `folder`: that of the plug-ins, with the bundle of editors in it. Null with a message in `error`.
  static std::unique_ptr<PluginEditor> open(Component component, const std::string& folder,
                                            const EditorFeatures& features, const EditorHost& host,
                                            std::string& error);
  ~PluginEditor();

  /// None once it is gone.
  NativeWindow window() const;
  void portEvent(uint32_t port, float value);
  /// Does all that is due. False when the window is gone.
  bool idle();

  /// For open alone.
  struct Passkey {
   private:
    friend PluginEditor;
    explicit Passkey() = default;
  };
  explicit PluginEditor(Passkey);

 private:
  bool prepare(Component component, const std::string& folder, const EditorFeatures& features,
               const EditorHost& host, std::string& error);

  std::shared_ptr<NSRunLoop> loop_;
  std::shared_ptr<EditorBundle> bundle_;
  std::shared_ptr<Display> display_;
  EffectInstance effect_;
  std::unique_ptr<PluginPorts> ports_;
  std::unique_ptr<PortMirror> mirror_;
  std::shared_ptr<NSWindow> window_;
};
