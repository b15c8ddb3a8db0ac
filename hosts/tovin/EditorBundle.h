#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"

class NSBundle;
class NSObject;
class NSView;

/// The bundle of editors, loaded from the folder of the running program, and its view factory. A host knows
/// no other class of it.
class EditorBundle {
 public:
  /// Null with a message when the bundle is missing or cannot be loaded.
  static std::unique_ptr<EditorBundle> load(std::string& error);
  ~EditorBundle();

  /// A fresh editor; null when there is none for the effect.
  std::shared_ptr<NSView> editorFor(AudioUnit unit) const;

 private:
  EditorBundle(std::shared_ptr<NSBundle> bundle, std::shared_ptr<NSObject> factory);

  std::shared_ptr<NSBundle> bundle_;
  std::shared_ptr<NSObject> factory_;
};
