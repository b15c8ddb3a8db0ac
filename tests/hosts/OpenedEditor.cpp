#include "OpenedEditor.h"

#include <sstream>
#include <stdexcept>
#include <utility>

#include "Eventually.h"

namespace {

std::vector<std::string> command(const std::string& effect, const std::vector<std::string>& words) {
  std::vector<std::string> all{TOVIN_PROGRAM, "open", effect, "--log", "--scale", "1"};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

}  // namespace

OpenedEditor::OpenedEditor(const std::string& effect, const std::vector<std::string>& words,
                           const std::vector<std::string>& environment, const std::string& server)
    : X11Hands(effect, server), host(command(effect, words), environment) {
  const bool shown = eventually([this] { return (window = user.windowOf(host.id())) != None; }, 20);
  if (!shown) throw std::runtime_error("tovin open shows no window: " + host.errors());
  XWindowAttributes attributes;
  XGetWindowAttributes(user.x(), window, &attributes);
  use(window, attributes.height);
}

void OpenedEditor::arrive() {
  // It complains of this line in a turn in which it has seen all that the server had to tell before. What
  // that changed is printed in the turn after.
  for (int turn = 0; turn < 2; ++turn) {
    const std::string question = "question " + std::to_string(++questions_);
    host.write(question + "\n");
    if (!eventually([&] { return host.errors().find(question + "\"") != std::string::npos; }, 20))
      throw std::runtime_error("tovin open does not answer: " + host.errors());
  }
}

void OpenedEditor::advance(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

void OpenedEditor::set(unsigned parameter, float value) {
  Lines before = heard();
  std::ostringstream line;
  line << parameter << " " << value << "\n";
  host.write(line.str());
  heard();
  heard_ = std::move(before);
}

Lines OpenedEditor::heard() {
  arrive();
  std::istringstream lines(host.output().substr(read_));
  read_ = host.output().size();
  std::string id;
  for (float value; lines >> id >> value;) hearWrite(heard_, id, value);
  return std::exchange(heard_, {});
}
