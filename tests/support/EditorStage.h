#pragma once

#include <string>

#include "AUEventListener.h"
#include "EditorBundle.h"
#include "EffectInstance.h"
#include "Stage.h"
#include "TestEffect.h"

/// A stage with an editor on a live effect. The program holds the bundle's code and is told its folder
/// (TOVIN_BUNDLE); all effects are registered and all classes known as soon as there is one.
class EditorStage : public Stage {
 public:
  explicit EditorStage(float scale = 1);
  ~EditorStage() override;
  static const EditorBundle& bundle();

  /// The effect's editor, drawn; false, and nothing is shown, when it gets none.
  bool open(Unit opened);
  bool open(Component component) { return open(openUnit(component)); }
  bool open(const std::string& code) { return open(registeredEffect(code)); }
  /// Closes what is shown and waits until no timer holds it any more.
  void closeEditor();
  /// And the effect.
  void close();

  float parameter(AudioUnitParameterID id) const { return valueOf(unit, id); }
  /// As a host's automation: every listener hears of it, but not heard().
  void set(unsigned parameter, float value) override;
  Lines heard() override;
  NSPoint place(const std::string& name) override;

  /// The view that an outlet of the editor holds.
  template <class View = NSView>
  View& outlet(const std::string& name) const {
    return dynamic_cast<View&>(outletOf(*editor, name));
  }
  Bitmap picture() const { return drawn(*editor); }

  Unit unit;
  std::shared_ptr<NSView> editor;

 private:
  AUEventListenerRef listener_ = nullptr;
  Lines heard_;
};

/// The effects of this system, in the order of their codes' registration.
std::vector<Component> allEffects();
