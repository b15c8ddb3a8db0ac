#include "Script.h"

#include <array>
#include <charconv>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::pair<const char*, unsigned> modifierNames[] = {{"shift", NSShiftKeyMask},
                                                              {"option", NSAlternateKeyMask}};
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
  throw std::invalid_argument("script: \"" + what + "\"");
}

template <class Names>
auto named(const Names& names, const std::string& name) {
  for (const auto& [known, value] : names)
    if (name == known) return value;
  refuse(name);
}

class Player {
 public:
  explicit Player(Hands& hands) : hands_(hands) {}

  void play(const std::string& step) {
    std::istringstream text(step);
    words_.assign(std::istream_iterator<std::string>(text), {});
    if (words_.empty()) return;
    const std::string& verb = words_[0];
    if (verb == "press") return press(1);
    if (verb == "click" || verb == "double") return click(verb == "click" ? 1 : 2);
    if (verb == "drag") return drag();
    if (verb == "release") return hands_.release();
    if (verb == "wheel") return hands_.wheel(hands_.place(words_.at(1)), number(2));
    if (verb == "type") return type(step.substr(step.find(verb) + 5));  // spaces count
    if (verb == "wait") return hands_.advance(number(1));
    if (verb == "set") return hands_.set(static_cast<unsigned>(number(1)), number(2));
    refuse(step);
  }

 private:
  float number(size_t word) const {
    const std::string& text = words_.at(word);
    float value = 0;
    const char* end = text.data() + text.size();
    if (std::from_chars(text.data(), end, value).ptr != end) refuse(text);
    return value;
  }
  unsigned modifiers(size_t word) const {
    unsigned all = 0;
    for (; word < words_.size(); ++word) all |= named(modifierNames, words_[word]);
    return all;
  }
  void press(int clickCount) {
    at_ = hands_.place(words_.at(1));
    hands_.press(at_, modifiers(2), clickCount);
  }
  void click(int count) {
    for (int i = 1; i <= count; ++i) {
      press(i);
      hands_.release();
    }
  }
  void drag() {
    NSPoint by;
    if (words_.at(1) == "to") {
      const NSPoint to = hands_.place(words_.at(2));
      by = {to.x - at_.x, to.y - at_.y};
    } else {
      by = {number(1), number(2)};
    }
    hands_.moveBy(by.x, by.y, modifiers(3));
    at_ = {at_.x + by.x, at_.y + by.y};
  }
  void type(const std::string& text) {
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, '<');) {
      if (!part.empty()) hands_.type(part);
      if (std::getline(parts, part, '>')) key(part);
    }
  }
  void key(std::string name) {
    const size_t star = name.find('*');
    const int times = star == std::string::npos ? 1 : std::stoi(name.substr(star + 1));
    name.erase(std::min(star, name.size()));
    unsigned modifiers = 0;
    if (name.size() > 2 && name[1] == '-') {
      modifiers = name[0] == 'S' ? NSShiftKeyMask : NSControlKeyMask;
      name.erase(0, 2);
    }
    for (int i = 0; i < times; ++i)
      name.size() == 1 ? hands_.type(name, modifiers) : hands_.key(named(keyNames, name), modifiers);
  }

  Hands& hands_;
  Lines words_;  // of the step
  NSPoint at_;   // where a drag goes on, if no modifier was held
};

}  // namespace

void Hands::set(unsigned parameter, float) {
  refuse("set " + std::to_string(parameter));
}

void hearWrite(Lines& heard, const std::string& name, float value) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 5).ptr;
  if (!heard.empty() && heard.back().starts_with(name + " ")) heard.pop_back();
  heard.push_back(name + " = " + std::string(text.begin(), end));
}

std::string joined(const Lines& lines) {
  std::string all;
  for (const std::string& line : lines) all += (all.empty() ? "" : ", ") + line;
  return all;
}

std::string play(Hands& hands, const std::string& script) {
  Player player(hands);
  hands.heard();
  std::istringstream steps(script);
  for (std::string step; std::getline(steps, step, ';');) player.play(step);
  return joined(hands.heard());
}
