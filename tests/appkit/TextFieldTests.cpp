#include "NSBundle.h"
#include "NSNotification.h"
#include "NSTextField.h"
#include "ViewBench.h"

namespace {

/// Delegate and target of fields: refuses the text "no", makes "5.00" of "5".
class Listener : public NSObject {
 public:
  static const Class& record() {
    static const Class c = Class::of<Listener>("Listener", NSObject::record())
                               .answers<&Listener::shouldEnd>("control:textShouldEndEditing:")
                               .answers<&Listener::didEnd>("controlTextDidEndEditing:")
                               .answers<&Listener::changed>("changed:");
    return c;
  }
  const Class& isa() const override { return record(); }

  bool shouldEnd(NSTextField* field, NSTextField*) {
    log.push_back("should " + names[field] + " " + field->stringValue());
    if (onShouldEnd) onShouldEnd();
    if (field->stringValue() == "5") field->setStringValue("5.00");
    return field->stringValue() != "no";
  }
  void didEnd(NSNotification* notification) {
    auto* field = dynamic_cast<NSTextField*>(notification->object());
    log.push_back("did " + names[field] + " " + field->stringValue());
  }
  void changed(NSTextField* field) { log.push_back("action " + names[field]); }

  std::map<NSTextField*, std::string> names;
  std::function<void()> onShouldEnd;
  Lines log;
};

class TextField : public ViewBench {
 protected:
  TextField() : bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {
    a = field("a", 10, "1.00");
    b = field("b", 70, "2.00");
    c = field("c", 130, "3.00");
    drawn();
  }

  std::shared_ptr<NSTextField> field(const char* name, float x, const char* text) {
    auto made = std::make_shared<NSTextField>(NSMakeRect(x, 10, 50, 16));
    made->setStringValue(text);
    made->setDelegate(&listener);
    made->setTarget(&listener);
    made->setAction(NSSelectorFromString("changed:"));
    listener.names[made.get()] = name;
    root->addSubview(made);
    return made;
  }

  /// Characters are typed; in angle brackets stand keys (S-: Shift, C-: Control), "out", a press beside the
  /// fields, and "=TEXT", a value that code gives the field a.
  void play(const std::string& keys) {
    static const std::map<std::string, NSKey> names{
        {"ret", NSKey::enter},    {"tab", NSKey::tab},           {"esc", NSKey::escape},
        {"bs", NSKey::backspace}, {"del", NSKey::forwardDelete}, {"left", NSKey::left},
        {"right", NSKey::right},  {"home", NSKey::home},         {"end", NSKey::end}};
    for (size_t i = 0; i < keys.size();) {
      if (keys[i] != '<') {
        const size_t end = std::min(keys.find('<', i), keys.size());
        display.type(keys.substr(i, end - i));
        i = end;
        continue;
      }
      const size_t end = keys.find('>', i);
      const std::string name = keys.substr(i + 1, end - i - 1);
      i = end + 1;
      if (name == "out") {
        pressAt(5, 80);
        display.release();
      } else if (name[0] == '=') {
        a->setStringValue(name.substr(1));
      } else if (name.starts_with("C-")) {
        display.type(name.substr(2), NSControlKeyMask);
      } else if (name.starts_with("S-")) {
        display.key(names.at(name.substr(2)), NSShiftKeyMask);
      } else {
        display.key(names.at(name));
      }
    }
  }
  std::string editing() const {
    std::string list;
    for (const auto& f : {a, b, c})
      if (f->isEditing()) list += listener.names.at(f.get());
    return list;
  }
  static float widthOf(const std::string& text) {
    return NSWidth(NSAttributedString(text, {}).boundingRect());
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;  // with the fonts
  Listener listener;
  std::shared_ptr<NSTextField> a, b, c;
};

}  // namespace

TEST_F(TextField, EndsEditingAsTheKeysSay) {
  const struct {
    const char* keys;
    Lines log;
    const char* text;
    const char* editing;
  } cases[] = {
      {"<out>", {}, "1.00", ""},
      {"<tab>", {}, "1.00", "b"},
      {"12<bs><bs>1.00<out>", {}, "1.00", ""},  // typed, but not changed
      {"<ret>", {"should a 1.00", "did a 1.00", "action a"}, "1.00", ""},
      {"12<ret>", {"should a 12", "did a 12", "action a"}, "12", ""},
      {"12<out>", {"should a 12", "did a 12"}, "12", ""},
      {"12<tab>", {"should a 12", "did a 12"}, "12", "b"},
      {"12<S-tab>", {"should a 12", "did a 12"}, "12", "c"},
      {"12<tab><tab><tab>7", {"should a 12", "did a 12"}, "7", "a"},
      {"12<tab><S-tab>7", {"should a 12", "did a 12"}, "7", "a"},
      {"12<esc>", {}, "1.00", ""},
      {"no<ret>", {"should a no"}, "no", "a"},
      {"no<tab>", {"should a no"}, "no", "a"},
      {"no<out>", {"should a no"}, "no", "a"},
      {"no<ret><bs><bs>4<ret>", {"should a no", "should a 4", "did a 4", "action a"}, "4", ""},
      {"no<esc>", {}, "1.00", ""},
      {"5<ret>", {"should a 5", "did a 5.00", "action a"}, "5.00", ""},
      {"7<=9.00>", {}, "7", "a"},
      {"7<=9.00><esc>", {}, "9.00", ""},
      {"<=9.00><out>", {}, "9.00", ""},
      {"7<=9.00><ret>", {"should a 7", "did a 7", "action a"}, "7", ""},
  };
  for (const auto& row : cases) {
    play("<esc>");
    a->setStringValue("1.00");
    pressAt(20, 18);
    display.release();
    ASSERT_EQ(editing(), "a");
    listener.log.clear();
    play(row.keys);
    EXPECT_EQ(listener.log, row.log) << row.keys;
    EXPECT_EQ(a->stringValue(), row.text) << row.keys;
    EXPECT_EQ(editing(), row.editing) << row.keys;
    EXPECT_EQ(window->isTyping(), row.editing[0] != 0) << row.keys;
    EXPECT_EQ(display.windows()[0]->isKeyboardWanted(), row.editing[0] != 0) << row.keys;
  }
}

TEST_F(TextField, EditsAsTheKeysSay) {
  const struct {
    const char* keys;
    const char* text;
    const char* clipboard;
  } cases[] = {
      {"x", "x", "cl"},
      {"<left>x", "x1.00", "cl"},
      {"<right>x", "1.00x", "cl"},
      {"<end><left><left>x", "1.x00", "cl"},
      {"<home><right>x<del>y", "1xy00", "cl"},
      {"<home><S-right><S-right>x", "x00", "cl"},
      {"<end><S-home><bs>", "", "cl"},
      {"<end><bs><bs>", "1.", "cl"},
      {"<home><bs>x", "x1.00", "cl"},
      {"<end><del>x", "1.00x", "cl"},
      {"<C-c>", "1.00", "1.00"},
      {"<C-x>", "", "1.00"},
      {"<end><C-c>", "1.00", "cl"},  // nothing selected, nothing copied
      {"<end><C-x>", "1.00", "cl"},
      {"<C-c><end><C-v>", "1.001.00", "1.00"},
      {"ab<C-a>c", "c", "cl"},
      {"ab<C-z>c", "abc", "cl"},
      {"äöü<left><left><bs>x", "xöü", "cl"},
      {"äö<S-left>z", "äz", "cl"},
      {"é€<home><del>", "€", "cl"},
      {"é€<home><right><bs>", "€", "cl"},
  };
  for (const auto& row : cases) {
    play("<esc>");
    a->setStringValue("1.00");
    display.setClipboardText("cl");
    pressAt(20, 18);
    display.release();
    play(row.keys);
    EXPECT_EQ(a->stringValue(), row.text) << row.keys;
    EXPECT_EQ(display.clipboardText(), row.clipboard) << row.keys;
  }
  display.setClipboardText("1\n2\t3");  // one line stays one line
  play("<C-a><C-v>");
  EXPECT_EQ(a->stringValue(), "123");
  EXPECT_EQ(a->floatValue(), 123);
  play("<esc>");
}

TEST_F(TextField, TheMouseSelects) {
  const auto text = std::make_shared<NSTextField>(NSMakeRect(10, 40, 180, 16));
  root->addSubview(text);
  const auto x = [](const char* before) { return 12 + widthOf(before) + 0.3f; };
  const auto drag = [&](float from, float to) {
    pressAt(from, 48);
    display.moveBy(to - from, 0);
    display.release();
  };
  const auto click = [&](float place, int count = 1, unsigned modifiers = 0) {
    pressAt(place, 48, count, modifiers);
    display.release();
  };
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { click(x("alpha")); }, "X"},
      {[&] { drag(x("alpha "), x("alpha beta")); }, "alpha X gamma"},
      {[&] { drag(x("alpha beta"), x("alpha ")); }, "alpha X gamma"},
      {[&] { drag(x("alpha "), 500); }, "alpha X"},
      {[&] { click(x("a")), click(x("alpha")); }, "alphaX beta gamma"},
      {[&] { click(x("a")), drag(x("al"), x("alph")); }, "alXa beta gamma"},
      {[&] { click(x("a")), click(x("al")), click(x("alph"), 1, NSShiftKeyMask); }, "alXa beta gamma"},
      {[&] { click(x("alpha be")), click(x("alpha be"), 2); }, "alpha X gamma"},
  };
  for (const auto& [select, expected] : cases) {
    play("<esc>");
    text->setStringValue("alpha beta gamma");
    select();
    display.type("X");
    EXPECT_EQ(text->stringValue(), expected);
  }
}

TEST_F(TextField, LosingTheKeyboardOrItsPlaceEndsEditing) {
  pressAt(20, 18);
  display.release();
  play("12");
  client().displayChangedKeyboard(false);
  EXPECT_EQ(listener.log, (Lines{"should a 12", "did a 12"}));
  EXPECT_EQ(editing(), "");
  pressAt(80, 18);
  display.release();
  play("34");
  b->removeFromSuperview();
  EXPECT_EQ(listener.log.back(), "did b 34");
  EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(TextField, EscapeInTheMiddleOfASelectingPressEndsEditing) {
  pressAt(20, 18);
  display.moveBy(5, 0);
  play("<esc>");
  EXPECT_EQ(editing(), "");
  display.release();
  EXPECT_TRUE(listener.log.empty());
}

TEST_F(TextField, TheInitialFirstResponderCanBeEditedAgainAfterReturn) {
  window->setInitialFirstResponder(a.get());
  pressAt(20, 18);
  display.release();
  play("12<ret>");
  EXPECT_EQ(editing(), "");
  pressAt(20, 18);
  display.release();
  EXPECT_EQ(editing(), "a");
  play("34<ret>");
  EXPECT_EQ(a->stringValue(), "34");
}

TEST_F(TextField, ThePressThatEndsEditingGoesToWhatIsThereAfterwards) {
  auto above = add("above", NSMakeRect(0, 70, 40, 30));
  listener.onShouldEnd = [&above] {
    above->removeFromSuperview();
    above.reset();
  };
  pressAt(20, 18);
  display.release();
  play("12");
  taken();
  play("<out>");
  EXPECT_EQ(taken(), (Lines{"down root 5 80", "up root 5 80"}));
}
