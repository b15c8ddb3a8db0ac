#include "NSTextField.h"

#include <algorithm>
#include <map>

#include "NSBundle.h"
#include "NSNotification.h"
#include "ViewBench.h"

namespace {

/// Delegate and target of fields: refuses the text "no", makes "5.00" of "5".
class Listener : public NSObject {
 public:
  const Class& isa() const override {
    static const Class c = Class::of<Listener>("Listener", NSObject::record())
                               .answers<&Listener::shouldEnd>("control:textShouldEndEditing:")
                               .answers<&Listener::didEnd>("controlTextDidEndEditing:")
                               .answers<&Listener::changed>("changed:");
    return c;
  }

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

/// Three fields in a row and a long one above them, d.
class TextField : public ViewBench {
 protected:
  TextField() : bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {
    a = field("a", NSMakeRect(10, 10, 50, 16));
    b = field("b", NSMakeRect(70, 10, 50, 16));
    c = field("c", NSMakeRect(130, 10, 50, 16));
    d = field("d", NSMakeRect(10, 40, 180, 16));
  }

  std::shared_ptr<NSTextField> field(const char* name, NSRect frame) {
    auto made = std::make_shared<NSTextField>(frame);
    made->setDelegate(&listener);
    made->setTarget(&listener);
    made->setAction(NSSelectorFromString("changed:"));
    listener.names[made.get()] = name;
    root->addSubview(made);
    return made;
  }

  /// A field; "out", beside the fields; or "@TEXT", behind that much of the long one's text, with _ for
  /// spaces.
  NSPoint place(const std::string& name) override {
    if (name == "out") return {5, 80};
    if (name[0] == '@') {
      std::string before = name.substr(1);
      std::replace(before.begin(), before.end(), '_', ' ');
      return {12.3f + NSWidth(NSAttributedString(before, {}).boundingRect()), 48};
    }
    return middleOf(name == "a" ? *a : *b);
  }
  /// Code gives the first field a value, whatever it is for.
  void set(unsigned, float value) override { a->setStringValue(std::to_string(std::lround(value))); }
  /// What delegate and target were told.
  Lines heard() override { return std::exchange(listener.log, {}); }

  std::string editing() const {
    for (const auto& f : {a, b, c, d})
      if (f->isEditing()) return listener.names.at(f.get());
    return "";
  }
  /// With no field edited and the clipboard's text "cl".
  void begin(NSTextField& field, const char* text) {
    play("type <escape>");
    field.setStringValue(text);
    display.setClipboardText("cl");
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;  // with the fonts
  Listener listener;
  std::shared_ptr<NSTextField> a, b, c, d;
};

}  // namespace

TEST_F(TextField, EndsEditingAsTheKeysSay) {
  const struct {
    const char *script, *heard, *text, *editing;
  } cases[] = {
      {"click out", "", "1.00", ""},
      {"type <tab>", "", "1.00", "b"},
      {"type 12<backspace*2>1.00; click out", "", "1.00", ""},  // typed, but not changed
      {"type <return>", "should a 1.00, did a 1.00, action a", "1.00", ""},
      {"type 12<return>", "should a 12, did a 12, action a", "12", ""},
      {"type 12<return>; click a", "should a 12, did a 12, action a", "12", "a"},
      {"type 12; click out", "should a 12, did a 12", "12", ""},
      {"type 12<tab>", "should a 12, did a 12", "12", "b"},
      {"type 12<S-tab>", "should a 12, did a 12", "12", "d"},
      {"type 12<tab><tab><tab><tab>7", "should a 12, did a 12", "7", "a"},
      {"type 12<tab><S-tab>7", "should a 12, did a 12", "7", "a"},
      {"type 12<escape>", "", "1.00", ""},
      {"press a; drag 5 0; type <escape>; release", "", "1.00", ""},
      {"type no<return>", "should a no", "no", "a"},
      {"type no<tab>", "should a no", "no", "a"},
      {"type no; click out", "should a no", "no", "a"},
      {"type no<return><backspace*2>4<return>", "should a no, should a 4, did a 4, action a", "4", ""},
      {"type no<escape>", "", "1.00", ""},
      {"type 5<return>", "should a 5, did a 5.00, action a", "5.00", ""},
      {"type 7; set 0 9", "", "7", "a"},
      {"type 7; set 0 9; type <escape>", "", "9", ""},
      {"set 0 9; click out", "", "9", ""},
      {"type 7; set 0 9; type <return>", "should a 7, did a 7, action a", "7", ""},
  };
  for (const auto& row : cases) {
    begin(*a, "1.00");
    play("click a");
    ASSERT_EQ(editing(), "a");
    EXPECT_EQ(play(row.script), row.heard) << row.script;
    EXPECT_EQ(a->stringValue(), row.text) << row.script;
    EXPECT_EQ(editing(), row.editing) << row.script;
    EXPECT_EQ(window->isTyping(), row.editing[0] != 0) << row.script;
    EXPECT_EQ(display.windows()[0]->isKeyboardWanted(), row.editing[0] != 0) << row.script;
  }
}

TEST_F(TextField, EditsAsTheKeysSay) {
  const struct {
    const char *keys, *text, *clipboard;
  } cases[] = {
      {"x", "x", "cl"},
      {"<left>x", "x1.00", "cl"},
      {"<right>x", "1.00x", "cl"},
      {"<end><left*2>x", "1.x00", "cl"},
      {"<home><right>x<delete>y", "1xy00", "cl"},
      {"<home><S-right><S-right>x", "x00", "cl"},
      {"<end><S-home><backspace>", "", "cl"},
      {"<end><backspace*2>", "1.", "cl"},
      {"<home><backspace>x", "x1.00", "cl"},
      {"<end><delete>x", "1.00x", "cl"},
      {"<C-c>", "1.00", "1.00"},
      {"<C-x>", "", "1.00"},
      {"<end><C-c>", "1.00", "cl"},  // nothing selected, nothing copied
      {"<end><C-x>", "1.00", "cl"},
      {"<C-c><end><C-v>", "1.001.00", "1.00"},
      {"ab<C-a>c", "c", "cl"},
      {"ab<C-z>c", "abc", "cl"},
      {"äöü<left*2><backspace>x", "xöü", "cl"},
      {"äö<S-left>z", "äz", "cl"},
      {"é€<home><delete>", "€", "cl"},
  };
  for (const auto& row : cases) {
    begin(*a, "1.00");
    play(std::string("click a; type ") + row.keys);
    EXPECT_EQ(a->stringValue(), row.text) << row.keys;
    EXPECT_EQ(display.clipboardText(), row.clipboard) << row.keys;
  }
  display.setClipboardText("1\n2\t3");  // one line stays one line
  play("type <C-a><C-v>");
  EXPECT_EQ(a->stringValue(), "123");
  EXPECT_EQ(a->floatValue(), 123);
}

TEST_F(TextField, TheMouseSelects) {
  const std::pair<const char*, const char*> cases[] = {
      {"click @alpha", "X"},
      {"press @alpha_; drag to @alpha_beta; release", "alpha X gamma"},
      {"press @alpha_beta; drag to @alpha_; release", "alpha X gamma"},
      {"press @alpha_; drag 500 0; release", "alpha X"},
      {"click @a; click @alpha", "alphaX beta gamma"},
      {"click @a; press @al; drag to @alph; release", "alXa beta gamma"},
      {"click @a; click @al; click @alph shift", "alXa beta gamma"},
      {"double @alpha_be", "alpha X gamma"},
  };
  for (const auto& [script, expected] : cases) {
    begin(*d, "alpha beta gamma");
    play(std::string(script) + "; type X");
    EXPECT_EQ(d->stringValue(), expected) << script;
  }
}

TEST_F(TextField, LosingTheKeyboardOrItsPlaceEndsEditing) {
  play("click a; type 12");
  client().displayChangedKeyboard(false);
  EXPECT_EQ(heard(), (Lines{"should a 12", "did a 12"}));
  EXPECT_EQ(editing(), "");
  play("click b; type 34");
  b->removeFromSuperview();
  EXPECT_EQ(heard().back(), "did b 34");
  EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(TextField, TheInitialFirstResponderCanBeEditedAgainAfterReturn) {
  window->setInitialFirstResponder(a.get());
  play("click a; type 12<return>");
  EXPECT_EQ(editing(), "");
  play("click a; type 34<return>");
  EXPECT_EQ(a->stringValue(), "34");
}

TEST_F(TextField, ThePressThatEndsEditingGoesToWhatIsThereAfterwards) {
  auto above = add("above", NSMakeRect(0, 70, 40, 30));
  listener.onShouldEnd = [&above] {
    above->removeFromSuperview();
    above.reset();
  };
  play("click a; type 12; click out");
  EXPECT_EQ(taken(), (Lines{"down root 5 80", "up root 5 80"}));
}
