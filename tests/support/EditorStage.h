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

  /// The editor of a registered effect of this system, drawn. Throws std::runtime_error when there is none.
  void open(const std::string& code);
  void open(Component component);
  /// The same for an effect that was opened; false, and nothing is shown, when it gets no editor.
  bool open(Unit opened);
  /// Closes what is shown and waits until no timer holds it any more.
  void closeEditor();
  /// And the effect.
  void close();

  float parameter(AudioUnitParameterID id) const { return valueOf(unit, id); }
  /// As a host's automation: every listener hears of it, but not heard().
  void set(unsigned parameter, float value) override;
  template <class T>
  void setProperty(AudioUnitPropertyID id, const T& value, AudioUnitScope scope = kAudioUnitScope_Global) {
    setGlobal(unit, id, value, scope);
  }
  Lines heard() override;
  NSPoint place(const std::string& name) override;

  /// The view that an outlet of the editor holds.
  template <class View = NSView>
  View& outlet(const std::string& name) const {
    return dynamic_cast<View&>(outletOf(*editor, name));
  }
  /// What the editor draws.
  Bitmap picture() const { return drawn(*editor); }

  Unit unit;
  std::shared_ptr<NSView> editor;

 private:
  void listen();

  AUEventListenerRef listener_ = nullptr;
  Lines heard_;
};

/// The effects of this system, in the order of their codes' registration.
std::vector<Component> allEffects();
