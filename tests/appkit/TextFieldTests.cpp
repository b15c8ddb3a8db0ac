#include "NSTextField.h"

#include "NSNotification.h"
#include "ViewBench.h"

namespace {

/// Three fields in a row. Is their delegate and target, which refuses the text
/// "no" and makes "5.00" of "5".
class TextField : public ViewBench, public NSObject {
 protected:
  TextField() {
    for (auto& field : fields) {
      const auto column = static_cast<float>(&field - fields);
      field = std::make_shared<NSTextField>(NSMakeRect(10 + 60 * column, 10, 50, 16));
      field->setDelegate(this);
      field->setTarget(this);
      field->setAction(NSSelectorFromString("changed:"));
      root->addSubview(field);
    }
  }
  ~TextField() override {
    if (window) window->close();  // editing ends while the delegate is there
  }

  const Class& isa() const override {
    static const Class c = Class::of<NSObject>("TextField", NSObject::record())
                               .answers<&TextField::shouldEnd>("control:textShouldEndEditing:")
                               .answers<&TextField::didEnd>("controlTextDidEndEditing:")
                               .answers<&TextField::changed>("changed:");
    return c;
  }
  bool shouldEnd(NSTextField* field, NSTextField*) {
    told.push_back("should " + field->stringValue());
    if (onShouldEnd) onShouldEnd();
    if (field->stringValue() == "5") field->setStringValue("5.00");
    return field->stringValue() != "no";
  }
  void didEnd(NSNotification* notification) {
    told.push_back("did " + dynamic_cast<NSTextField&>(*notification->object()).stringValue());
  }
  void changed(NSTextField*) { told.push_back("action"); }

  /// A field; "out", beside the fields; or "@TEXT", behind that much of the first one's text.
  NSPoint place(const std::string& name) override {
    if (name == "out") return {5, 80};
    if (name[0] == '@') return {12.3f + NSWidth(NSAttributedString(name.substr(1), {}).boundingRect()), 18};
    return middleOf(*fields[name == "b"]);
  }
  /// Code gives the first field a value, whatever it is for.
  void set(unsigned, float value) override { fields[0]->setStringValue(std::to_string(std::lround(value))); }
  /// What delegate and target were told.
  Lines heard() override { return std::exchange(told, {}); }

  std::string editing() const {
    for (const auto& field : fields)
      if (field->isEditing()) return {"abc"[&field - fields]};
    return "";
  }
  /// With no field edited.
  void begin(const char* text) {
    play("type <escape>");
    fields[0]->setStringValue(text);
    display.setClipboardText("cl");
  }
  std::string text() const { return fields[0]->stringValue(); }

  std::shared_ptr<NSTextField> fields[3];
  std::function<void()> onShouldEnd;
  Lines told;
};

}  // namespace

TEST_F(TextField, EndsEditingAsTheKeysSay) {
  const struct {
    const char *script, *heard, *text, *editing;
  } cases[] = {
      {"click out", "", "1.00", ""},
      {"type <return>", "should 1.00, did 1.00, action", "1.00", ""},
      {"type 12<return>", "should 12, did 12, action", "12", ""},
      {"type 12; click out", "should 12, did 12", "12", ""},
      {"type 12<tab>", "should 12, did 12", "12", "b"},
      {"type 12<S-tab>", "should 12, did 12", "12", "c"},
      {"type 12<tab><S-tab>7", "should 12, did 12", "7", "a"},
      {"type 12<escape>", "", "1.00", ""},
      {"type no; click out", "should no", "no", "a"},
      {"type no<return><backspace*2>4<return>", "should no, should 4, did 4, action", "4", ""},
      {"type 5<return>", "should 5, did 5.00, action", "5.00", ""},
      {"type 7; set 0 9", "", "7", "a"},
      {"type 7; set 0 9; type <escape>", "", "9", ""},
  };
  for (const auto& row : cases) {
    begin("1.00");
    play("click a");
    ASSERT_EQ(editing(), "a");
    EXPECT_EQ(play(row.script), row.heard) << row.script;
    EXPECT_EQ(text(), row.text) << row.script;
    EXPECT_EQ(editing(), row.editing) << row.script;
    EXPECT_EQ(display.windows()[0]->isKeyboardWanted(), row.editing[0] != 0) << row.script;
  }
}

TEST_F(TextField, EditsAsTheKeysSay) {
  const std::pair<const char*, const char*> cases[] = {
      {"x", "x"},
      {"<home><right>x<delete>y", "1xy00"},
      {"<home><S-right><S-right>x", "x00"},
      {"<end><delete>x", "1.00x"},
      {"<C-c><end><C-v>", "1.001.00"},
      {"<C-x>y<C-v>", "y1.00"},
      {"<end><C-c><C-v>", "1.00cl"},  // nothing selected, nothing copied
      {"ab<C-a>c", "c"},
      {"äöü<left*2><backspace>x", "xöü"},
  };
  for (const auto& [keys, result] : cases) {
    begin("1.00");
    play(std::string("click a; type ") + keys);
    EXPECT_EQ(text(), result) << keys;
  }
  display.setClipboardText("1\n2\t3");  // one line stays one line
  play("type <C-a><C-v>");
  EXPECT_EQ(text(), "123");
}

TEST_F(TextField, TheMouseSelects) {
  const std::pair<const char*, const char*> cases[] = {
      {"click @ab", "X"},  // the first click selects all
      {"press @ab; drag to @a; release", "aX cd"},
      {"press @ab; drag 500 0; release", "abX"},
      {"click @a; click @a; click @ab shift", "aX cd"},
      {"double @a", "X cd"},
  };
  for (const auto& [script, expected] : cases) {
    begin("ab cd");
    play(std::string(script) + "; type X");
    EXPECT_EQ(text(), expected) << script;
  }
}

TEST_F(TextField, LosingTheKeyboardOrItsPlaceEndsEditing) {
  play("click a; type 12");
  client().displayChangedKeyboard(false);
  EXPECT_EQ(heard(), (Lines{"should 12", "did 12"}));
  EXPECT_EQ(editing(), "");
  play("click b; type 34");
  fields[1]->removeFromSuperview();
  EXPECT_EQ(heard().back(), "did 34");
  EXPECT_EQ(window->firstResponder(), nullptr);
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
