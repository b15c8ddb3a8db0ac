#include "Script.h"

#include <array>
#include <charconv>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::pair<const char*, unsigned> modifierNames[] = {{"shift", NSShiftKeyMask},
                                                              {"option", NSAlternateKeyMask},
                                                              {"control", NSControlKeyMask},
                                                              {"command", NSCommandKeyMask}};
constexpr std::pair<const char*, NSKey> keyNames[] = {{"return", NSKey::enter},
                                                      {"tab", NSKey::tab},
                                                      {"escape", NSKey::escape},
                                                      {"backspace", NSKey::backspace},
                                                      {"delete", NSKey::forwardDelete},
                                                      {"left", NSKey::left},
                                                      {"right", NSKey::right},
                                                      {"up", NSKey::up},
                                                      {"down", NSKey::down},
                                                      {"home", NSKey::home},
                                                      {"end", NSKey::end}};

[[noreturn]] void refuse(const std::string& what) {
  throw std::invalid_argument("script: " + what);
}

template <class Names>
auto named(const Names& names, const std::string& name) {
  for (const auto& [known, value] : names)
    if (name == known) return value;
  refuse("\"" + name + "\"");
}

/// The words of one step.
class Step {
 public:
  explicit Step(const std::string& text) : words_(text) { words_ >> verb_; }

  const std::string& verb() const { return verb_; }
  std::string word() {
    std::string next;
    if (!(words_ >> next)) refuse("\"" + words_.str() + "\" is too short");
    return next;
  }
  float number() {
    const std::string text = word();
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) refuse("number \"" + text + "\"");
    return value;
  }
  unsigned modifiers() {
    unsigned all = 0;
    for (std::string next; words_ >> next;) all |= named(modifierNames, next);
    return all;
  }
  std::string rest() {
    std::string text;
    std::getline(words_ >> std::ws, text);
    return text;
  }

 private:
  std::istringstream words_;
  std::string verb_;
};

class Player {
 public:
  explicit Player(Hands& hands) : hands_(hands) {}

  void play(const std::string& text) {
    Step step(text);
    const std::string& verb = step.verb();
    if (verb == "press") return press(step, 1);
    if (verb == "click" || verb == "double") return click(step, verb == "click" ? 1 : 2);
    if (verb == "drag") return drag(step);
    if (verb == "release") return hands_.release();
    if (verb == "wheel") {
      const NSPoint at = hands_.place(step.word());
      return hands_.wheel(at, step.number());
    }
    if (verb == "type") return type(step.rest());
    if (verb == "wait") return hands_.advance(step.number());
    if (verb == "set") {
      const auto parameter = static_cast<unsigned>(step.number());
      return hands_.set(parameter, step.number());
    }
    if (!verb.empty()) refuse("step \"" + text + "\"");
  }

 private:
  void press(Step& step, int clickCount) {
    at_ = hands_.place(step.word());
    hands_.press(at_, step.modifiers(), clickCount);
  }
  void click(Step& step, int count) {
    const NSPoint at = hands_.place(step.word());
    const unsigned modifiers = step.modifiers();
    for (int i = 1; i <= count; ++i) {
      hands_.press(at, modifiers, i);
      hands_.release();
    }
  }
  void drag(Step& step) {
    const std::string first = step.word();
    NSPoint by;
    if (first == "to") {
      const NSPoint to = hands_.place(step.word());
      by = {to.x - at_.x, to.y - at_.y};
    } else {
      by = {Step("drag " + first).number(), step.number()};
    }
    hands_.moveBy(by.x, by.y, step.modifiers());
    at_ = {at_.x + by.x, at_.y + by.y};
  }
  void type(const std::string& text) {
    for (size_t i = 0; i < text.size();) {
      const size_t next = text[i] == '<' ? text.find('>', i) : std::min(text.find('<', i), text.size());
      if (next == std::string::npos) refuse("\"" + text + "\" lacks a >");
      if (text[i] == '<')
        key(text.substr(i + 1, next - i - 1));
      else
        hands_.type(text.substr(i, next - i));
      i = next + (text[i] == '<');
    }
  }
  void key(std::string name) {
    const size_t star = name.find('*');
    int times = 1;
    if (star != std::string::npos) {
      times = std::stoi(name.substr(star + 1));
      name.erase(star);
    }
    unsigned modifiers = 0;
    if (name.size() > 2 && name[1] == '-') {
      modifiers = name[0] == 'S' ? NSShiftKeyMask : NSControlKeyMask;
      name.erase(0, 2);
    }
    for (int i = 0; i < times; ++i)
      name.size() == 1 ? hands_.type(name, modifiers) : hands_.key(named(keyNames, name), modifiers);
  }

  Hands& hands_;
  NSPoint at_;  // where a drag goes on, if no modifier was held
};

}  // namespace

void Hands::set(unsigned parameter, float) {
  refuse("there is no effect with a parameter " + std::to_string(parameter));
}

void hearWrite(Lines& heard, const std::string& name, float value) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 5).ptr;
  if (!heard.empty() && heard.back().starts_with(name + " ")) heard.pop_back();
  heard.push_back(name + " = " + std::string(text.begin(), end));
}

std::string play(Hands& hands, std::string_view script) {
  Player player(hands);
  hands.heard();
  while (!script.empty()) {
    const size_t end = std::min(script.find_first_of(";\n"), script.size());
    player.play(std::string(script.substr(0, end)));
    script.remove_prefix(std::min(end + 1, script.size()));
  }
  std::string all;
  for (const std::string& line : hands.heard()) all += (all.empty() ? "" : ", ") + line;
  return all;
}
