#include "EditorBundle.h"

#include <filesystem>

#include "AUCocoaUIBase.h"
#include "AppKitClasses.h"
#include "NSView.h"

std::unique_ptr<EditorBundle> EditorBundle::load(std::string& error) {
  NSRegisterAppKitClasses();
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  auto bundle = NSBundle::bundleWithPath(folder / "TovinAUGUI.bundle", error);
  return bundle && bundle->load(error) ? ofLoaded(std::move(bundle), error) : nullptr;
}

std::unique_ptr<EditorBundle> EditorBundle::linked(const std::string& folder,
                                                   NSBundle::BundleClassesFunction classes,
                                                   std::string& error) {
  NSRegisterAppKitClasses();
  auto bundle = NSBundle::bundleWithPath(folder, error);
  if (!bundle) return nullptr;
  bundle->loadLinked(classes);
  return ofLoaded(std::move(bundle), error);
}

std::unique_ptr<EditorBundle> EditorBundle::ofLoaded(std::shared_ptr<NSBundle> bundle, std::string& error) {
  auto factory = bundle->principalClass()->make();
  if (!dynamic_cast<AUCocoaUIBase*>(factory.get())) {
    error = bundle->bundlePath() + ": its principal class is no view factory";
    return nullptr;
  }
  return std::unique_ptr<EditorBundle>(new EditorBundle(std::move(bundle), std::move(factory)));
}

EditorBundle::EditorBundle(std::shared_ptr<NSBundle> bundle, std::shared_ptr<NSObject> factory)
    : bundle_(std::move(bundle)), factory_(std::move(factory)) {}

EditorBundle::~EditorBundle() = default;

std::shared_ptr<NSView> EditorBundle::editorFor(AudioUnit unit) const {
  return dynamic_cast<AUCocoaUIBase&>(*factory_).uiViewForAudioUnit_withSize(unit, NSSize{});
}
