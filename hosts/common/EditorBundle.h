#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"
#include "NSBundle.h"

class NSObject;
class NSView;

/// The bundle of editors, loaded from the folder of the running program, and its view factory. A host knows
/// no other class of it.
class EditorBundle {
 public:
  /// Null with a message when the bundle is missing or cannot be loaded.
  static std::unique_ptr<EditorBundle> load(std::string& error);
  /// The same for a program that holds the module's code itself: the folder gives the rest.
  static std::unique_ptr<EditorBundle> linked(const std::string& folder,
                                              NSBundle::BundleClassesFunction classes, std::string& error);
  ~EditorBundle();

  /// A fresh editor; null when there is none for the effect.
  std::shared_ptr<NSView> editorFor(AudioUnit unit) const;

 private:
  static std::unique_ptr<EditorBundle> ofLoaded(std::shared_ptr<NSBundle> bundle, std::string& error);
  EditorBundle(std::shared_ptr<NSBundle> bundle, std::shared_ptr<NSObject> factory);

  std::shared_ptr<NSBundle> bundle_;
  std::shared_ptr<NSObject> factory_;
};
