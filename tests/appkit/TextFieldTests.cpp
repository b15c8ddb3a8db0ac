#include "NSTextField.h"

#include <algorithm>

#include "NSNotification.h"
#include "ViewBench.h"

namespace {

/// Three fields in a row and a long one above them, d. Is their delegate and target, which refuses the text
/// "no" and makes "5.00" of "5".
class TextField : public ViewBench, public NSObject {
 protected:
  TextField() {
    const NSRect frames[] = {
        {{10, 10}, {50, 16}}, {{70, 10}, {50, 16}}, {{130, 10}, {50, 16}}, {{10, 40}, {180, 16}}};
    for (size_t i = 0; i < 4; ++i) {
      fields[i] = std::make_shared<NSTextField>(frames[i]);
      fields[i]->setDelegate(this);
      fields[i]->setTarget(this);
      fields[i]->setAction(NSSelectorFromString("changed:"));
      root->addSubview(fields[i]);
    }
  }

  const Class& isa() const override {
    static const Class c = Class::of<NSObject>("TextField", NSObject::record())
                               .answers<&TextField::shouldEnd>("control:textShouldEndEditing:")
                               .answers<&TextField::didEnd>("controlTextDidEndEditing:")
                               .answers<&TextField::changed>("changed:");
    return c;
  }
  bool shouldEnd(NSTextField* field, NSTextField*) {
    told.push_back("should " + nameOf(field) + " " + field->stringValue());
    if (onShouldEnd) onShouldEnd();
    if (field->stringValue() == "5") field->setStringValue("5.00");
    return field->stringValue() != "no";
  }
  void didEnd(NSNotification* notification) {
    auto* field = dynamic_cast<NSTextField*>(notification->object());
    told.push_back("did " + nameOf(field) + " " + field->stringValue());
  }
  void changed(NSTextField* field) { told.push_back("action " + nameOf(field)); }
  std::string nameOf(const NSTextField* field) const {
    std::string name = "a";
    for (size_t i = 0; fields[i].get() != field; ++i) ++name[0];
    return name;
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
    return middleOf(*fields[name == "b"]);
  }
  /// Code gives the first field a value, whatever it is for.
  void set(unsigned, float value) override { fields[0]->setStringValue(std::to_string(std::lround(value))); }
  /// What delegate and target were told.
  Lines heard() override { return std::exchange(told, {}); }

  std::string editing() const {
    for (const auto& field : fields)
      if (field->isEditing()) return nameOf(field.get());
    return "";
  }
  /// With no field edited.
  void begin(size_t field, const char* text) {
    play("type <escape>");
    fields[field]->setStringValue(text);
    display.setClipboardText("cl");
  }
  std::string text() const { return fields[0]->stringValue(); }

  std::shared_ptr<NSTextField> fields[4];
  std::function<void()> onShouldEnd;
  Lines told;
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
    begin(0, "1.00");
    play("click a");
    ASSERT_EQ(editing(), "a");
    EXPECT_EQ(play(row.script), row.heard) << row.script;
    EXPECT_EQ(text(), row.text) << row.script;
    EXPECT_EQ(editing(), row.editing) << row.script;
    EXPECT_EQ(window->isTyping(), row.editing[0] != 0) << row.script;
    EXPECT_EQ(display.windows()[0]->isKeyboardWanted(), row.editing[0] != 0) << row.script;
  }
}

TEST_F(TextField, EditsAsTheKeysSay) {
  const std::pair<const char*, const char*> cases[] = {
      {"x", "x"},
      {"<left>x", "x1.00"},
      {"<right>x", "1.00x"},
      {"<end><left*2>x", "1.x00"},
      {"<home><right>x<delete>y", "1xy00"},
      {"<home><S-right><S-right>x", "x00"},
      {"<end><S-home><backspace>", ""},
      {"<end><backspace*2>", "1."},
      {"<home><backspace>x", "x1.00"},
      {"<end><delete>x", "1.00x"},
      {"<C-c><end><C-v>", "1.001.00"},
      {"<C-x>y<C-v>", "y1.00"},
      {"<end><C-c><C-v>", "1.00cl"},  // nothing selected, nothing copied
      {"<end><C-x><C-v>", "1.00cl"},
      {"ab<C-a>c", "c"},
      {"ab<C-z>c", "abc"},
      {"äöü<left*2><backspace>x", "xöü"},
      {"äö<S-left>z", "äz"},
      {"é€<home><delete>", "€"},
  };
  for (const auto& [keys, result] : cases) {
    begin(0, "1.00");
    play(std::string("click a; type ") + keys);
    EXPECT_EQ(text(), result) << keys;
  }
  display.setClipboardText("1\n2\t3");  // one line stays one line
  play("type <C-a><C-v>");
  EXPECT_EQ(text(), "123");
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
    begin(3, "alpha beta gamma");
    play(std::string(script) + "; type X");
    EXPECT_EQ(fields[3]->stringValue(), expected) << script;
  }
}

TEST_F(TextField, LosingTheKeyboardOrItsPlaceEndsEditing) {
  play("click a; type 12");
  client().displayChangedKeyboard(false);
  EXPECT_EQ(heard(), (Lines{"should a 12", "did a 12"}));
  EXPECT_EQ(editing(), "");
  play("click b; type 34");
  fields[1]->removeFromSuperview();
  EXPECT_EQ(heard().back(), "did b 34");
  EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(TextField, TheInitialFirstResponderCanBeEditedAgainAfterReturn) {
  window->setInitialFirstResponder(fields[0].get());
  play("click a; type 12<return>");
  EXPECT_EQ(editing(), "");
  play("click a; type 34<return>");
  EXPECT_EQ(text(), "34");
}

TEST_F(TextField, ThePressThatEndsEditingGoesToWhatIsThereAfterwards) {
  auto above = add("above", NSMakeRect(0, 70, 40, 30));
  onShouldEnd = [&above] {
    above->removeFromSuperview();
    above.reset();
  };
  play("click a; type 12; click out");
  EXPECT_EQ(taken(), (Lines{"down root 5 80", "up root 5 80"}));
}
