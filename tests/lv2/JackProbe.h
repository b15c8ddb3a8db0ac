#pragma once

#include <jack/jack.h>

#include <atomic>
#include <string>

/// Sends clicks through the only other client of a JACK server and waits for what comes back.
class JackProbe {
 public:
  explicit JackProbe(const std::string& server);
  ~JackProbe();
  JackProbe(const JackProbe&) = delete;
  JackProbe& operator=(const JackProbe&) = delete;

  /// Joins the first input and the first output of the client whose name contains the text; false with none.
  bool connectTo(const std::string& client);
  /// Frames from a click to its return; -1 when it does not come within the seconds.
  int framesOfAClick(double seconds);

 private:
  static int process(jack_nframes_t frames, void* self);

  jack_client_t* client_;
  jack_port_t* out_ = nullptr;
  jack_port_t* in_ = nullptr;
  std::atomic<bool> armed_ = false;
  std::atomic<int> travelled_ = -1;
  jack_nframes_t sent_ = 0;
  bool underway_ = false;
};
