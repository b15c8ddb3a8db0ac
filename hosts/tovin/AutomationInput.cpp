#include "AutomationInput.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "AUEventListener.h"
#include "EffectParameters.h"
#include "NSRunLoop.h"
#include "NumberText.h"

AutomationInput::AutomationInput(AudioUnit unit, HostTempo& tempo) : unit_(unit), tempo_(tempo) {
  NSRunLoop::currentRunLoop().addDescriptor(STDIN_FILENO, [this] { readable(); });
}

AutomationInput::~AutomationInput() {
  NSRunLoop::currentRunLoop().removeDescriptor(STDIN_FILENO);
}

void AutomationInput::readable() {
  char bytes[4096];
  const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
  if (count > 0) pending_.append(bytes, static_cast<size_t>(count));
  if (count <= 0) {
    NSRunLoop::currentRunLoop().removeDescriptor(STDIN_FILENO);
    if (!pending_.empty()) pending_ += '\n';
  }
  for (size_t end; (end = pending_.find('\n')) != std::string::npos;) {
    const std::string text = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    line(text);
  }
}

void AutomationInput::line(const std::string& text) {
  ++lineNumber_;
  if (text.find_first_not_of(" \t\r") == std::string::npos) return;
  const auto wrong = [&](const std::string& expected) {
    std::cerr << "tovin: standard input, line " << lineNumber_ << ": \"" << text << "\", expected "
              << expected << "\n";
  };
  constexpr std::string_view tempoWord = "tempo";
  if (text.starts_with(tempoWord)) {
    const foundation::ParsedNumber tempo =
        foundation::numberPrefix(std::string_view(text).substr(tempoWord.size()));
    if (!tempo.found || !(tempo.value >= slowestTempo && tempo.value <= fastestTempo))
      return wrong("tempo BPM, from 1 to 999");
    tempo_.setTempo(tempo.value);
    return;
  }
  const foundation::ParsedNumber id = foundation::numberPrefix(text);
  const foundation::ParsedNumber value = foundation::numberPrefix(std::string_view(text).substr(id.length));
  const size_t rest = text.find_first_not_of(" \t\r", id.length + value.length);
  if (!id.found || !value.found || rest != std::string::npos || id.value != std::floor(id.value))
    return wrong("ID VALUE");
  const auto all = effectParameters(unit_);
  const auto p = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.id == id.value; });
  if (p == all.end() || !p->isWritable()) return wrong("the identifier of a parameter that can be set");
  const AudioUnitParameter address{unit_, p->id, kAudioUnitScope_Global, 0};
  AUParameterSet(nullptr, nullptr, &address, static_cast<Float32>(value.value), 0);
}
