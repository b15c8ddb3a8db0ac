#include "JackProbe.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

JackProbe::JackProbe(const std::string& server)
    : client_(jack_client_open("probe", static_cast<jack_options_t>(JackNoStartServer | JackServerName),
                               nullptr, server.c_str())) {
  if (!client_) throw std::runtime_error("no JACK server \"" + server + "\"");
  out_ = jack_port_register(client_, "out", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
  in_ = jack_port_register(client_, "in", JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
  jack_set_process_callback(client_, &JackProbe::process, this);
  jack_activate(client_);
}

JackProbe::~JackProbe() {
  jack_client_close(client_);
}

bool JackProbe::connectTo(const std::string& client) {
  const auto first = [&](unsigned long flags) {
    const char** names = jack_get_ports(client_, client.c_str(), JACK_DEFAULT_AUDIO_TYPE, flags);
    const std::string name = names ? names[0] : "";
    jack_free(names);
    return name;
  };
  return jack_connect(client_, jack_port_name(out_), first(JackPortIsInput).c_str()) == 0 &&
         jack_connect(client_, first(JackPortIsOutput).c_str(), jack_port_name(in_)) == 0;
}

int JackProbe::framesOfAClick(double seconds) {
  travelled_ = -1;
  armed_ = true;
  for (double waited = 0; waited < seconds && travelled_ < 0; waited += 0.02)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return travelled_;
}

int JackProbe::process(jack_nframes_t frames, void* self) {
  auto& probe = *static_cast<JackProbe*>(self);
  const jack_nframes_t now = jack_last_frame_time(probe.client_);
  auto* out = static_cast<float*>(jack_port_get_buffer(probe.out_, frames));
  const auto* in = static_cast<const float*>(jack_port_get_buffer(probe.in_, frames));
  std::fill(out, out + frames, 0.0f);
  if (probe.armed_.exchange(false)) {
    out[0] = 1;
    probe.sent_ = now;
    probe.underway_ = true;
  }
  const auto* click = std::find_if(in, in + frames, [](float sample) { return sample > 0.2f; });
  if (probe.underway_ && click != in + frames) {
    probe.underway_ = false;
    probe.travelled_ = static_cast<int>(now - probe.sent_) + static_cast<int>(click - in);
  }
  return 0;
}
