#pragma once

#include <lv2/ui/ui.h>

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "AUEffectBase.h"
#include "AUEventListener.h"
#include "HostTempo.h"
#include "PluginPorts.h"

/// What a plug-in's host offers its editor.
struct EditorHost {
  LV2UI_Write_Function write = nullptr;
  LV2UI_Controller controller = nullptr;
  std::optional<LV2UI_Touch> touch = {};
};

/// Keeps an effect that does not sound equal to the ports of the one that does, in both directions: what the
/// host reports becomes a change of the effect, which its editor follows; what the editor changes is written
/// to the host, between the beginning and the end of a touch. Neither comes back as the other. Main thread,
/// in the scope of the run loop that it was made in.
class PortMirror {
 public:
  /// Effect and ports must live as long as this.
  PortMirror(AudioUnit effect, const PluginPorts& ports, const EditorHost& host);
  /// Ends all touches.
  ~PortMirror();
  PortMirror(const PortMirror&) = delete;
  PortMirror& operator=(const PortMirror&) = delete;

  /// The host's value of a port. Of a port that the user holds nothing is taken, since it can only be the
  /// echo of an earlier write. Ports that are none and values that are no numbers are ignored.
  void hostSet(uint32_t port, float value);
  /// After each turn of the run loop: ends the touches, unless the user still holds something.
  void settle(bool isHeld);

 private:
  static void dispatch(void* self, void* object, const AudioUnitEvent* event, UInt64 hostTime, Float32 value);
  void listen(const AudioUnitEvent& event);
  float effectValue(const PluginPort& port) const;
  /// The effect may have changed there: if so, tells the host.
  void tellHost(uint32_t port);
  void touch(uint32_t port, bool held) const;

  AudioUnit effect_;
  const PluginPorts& ports_;
  EditorHost host_;
  AUEventListenerRef listener_ = nullptr;
  std::vector<float> known_;  // to both sides, per port
  std::set<uint32_t> touched_;
  std::unique_ptr<HostTempo> tempo_;  // once the host has told one
};
