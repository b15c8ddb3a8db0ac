#pragma once

#include <memory>
#include <optional>
#include <string>

#include "NSColor.h"
#include "NSImageView.h"
#include "jxAUParam.h"

/// Base of the views that put one parameter on screen: owns the binding and what an editor has chosen for
/// the view. An interface description places it; the editor's setAU: chooses a name, a colour, a scale and
/// hooks it, once, with setAUParameter:. An unhooked view draws nothing. Main thread.
class jxAUParamView : public NSImageView {
 public:
  explicit jxAUParamView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// Makes the binding. Hooking a second time is an assertion failure.
  virtual void setAUParameter(const AudioUnitParameter& parameter);
  jxAUParam* auParam() const { return mParam.get(); }

  /// The binding's change message; `binding` is null before hooking.
  virtual void valueChanged(jxAUParam* binding) { static_cast<void>(binding); }

  /// Told when the user begins and ends turning; not owned.
  void setDelegate(NSObject* newDelegate) { delegate = newDelegate; }
  /// Shown instead of the parameter's own name; before hooking.
  void setCustomName(std::string name) { customName = std::move(name); }
  virtual void setColor(std::shared_ptr<NSColor> color) { customColor = std::move(color); }
  /// Display value = effect value × scale; after hooking.
  virtual void setCustomScale(double scale);

  void drawRect(NSRect dirty) override;

 protected:
  std::string shownName() const { return customName ? *customName : mParam->parameterName(); }

  std::shared_ptr<jxAUParam> mParam;
  std::optional<std::string> customName;
  std::shared_ptr<NSColor> customColor;
  NSObject* delegate = nullptr;
};
