#include "PluginEditor.h"

#include <cmath>
#include <map>

#include "AudioUnitProperties.h"
#include "NSLog.h"
#include "NSWindow.h"
#include "OpenDisplay.h"
#include "PluginKinds.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

// What all open editors share. Bundle and displays go with the last of them, not with the object's static
// variables, of which nobody knows the order.

std::shared_ptr<NSRunLoop> sharedLoop() {
  static const auto loop = std::make_shared<NSRunLoop>();  // listeners stay on it from one editor to the next
  return loop;
}

std::shared_ptr<Display> sharedDisplay(float scale, std::string& error) {
  static std::map<float, std::weak_ptr<Display>> known;
  auto display = known[scale].lock();
  if (!display) known[scale] = display = openDisplay(error, scale);
  return display;
}

std::shared_ptr<EditorBundle> sharedBundle(const std::string& folder, std::string& error) {
  static std::weak_ptr<EditorBundle> known;
  auto bundle = known.lock();
  if (!bundle)
    known = bundle = EditorBundle::linked(folder + "/TovinAUGUI.bundle", &TovinBundleClasses, error);
  return bundle;
}

void setSampleRate(AudioUnit effect, Float64 rate) {
  if (AudioUnitSetProperty(effect, kAudioUnitProperty_SampleRate, kAudioUnitScope_Global, 0, &rate,
                           sizeof rate) != noErr)
    NSLog("the effect does not work at the host's " + std::to_string(rate) + " Hz; its editor shows another");
}

}  // namespace

PluginEditor::PluginEditor(Passkey) : loop_(sharedLoop()) {}

std::unique_ptr<PluginEditor> PluginEditor::open(Component component, const std::string& folder,
                                                 const EditorFeatures& features, const EditorHost& host,
                                                 std::string& error) {
  auto editor = std::make_unique<PluginEditor>(Passkey());
  return editor->prepare(component, folder, features, host, error) ? std::move(editor) : nullptr;
}

bool PluginEditor::prepare(Component component, const std::string& folder, const EditorFeatures& features,
                           const EditorHost& host, std::string& error) {
  const NSRunLoop::Scope scope(loop_);
  bundle_ = sharedBundle(folder, error);
  if (!bundle_) return false;
  display_ = sharedDisplay(features.scaleFactor, error);
  if (!display_) return false;
  effect_ = openEffect(component);
  if (!effect_) {
    error = effectCode(component) + ": the effect cannot be opened";
    return false;
  }
  if (features.sampleRate) setSampleRate(effect_.get(), *features.sampleRate);
  ports_ = std::make_unique<PluginPorts>(effect_.get());
  mirror_ = std::make_unique<PortMirror>(effect_.get(), *ports_, host);
  const std::shared_ptr<NSView> view = bundle_->editorFor(effect_.get());
  if (!view) {
    error = effectCode(component) + ": there is no editor for this effect";
    return false;
  }
  const NSSize size = view->frame().size;
  window_ = std::make_shared<NSWindow>(NSRect{{0, 0}, size}, NSTitledWindowMask, NSBackingStoreBuffered,
                                       false, display_.get());
  window_->setTitle(pluginName(component));
  window_->setContentView(view);
  window_->setInitialFirstResponder(view.get());
  window_->setParentWindow(features.parent);
  window_->makeKeyAndOrderFront();
  if (features.resize)
    features.resize->ui_resize(features.resize->handle,
                               static_cast<int>(std::lround(size.width * display_->scale())),
                               static_cast<int>(std::lround(size.height * display_->scale())));
  loop_->runTurn();
  return true;
}

PluginEditor::~PluginEditor() {
  const NSRunLoop::Scope scope(loop_);
  if (window_) window_->close();
  loop_->runTurn();  // what the end of a gesture changed still reaches the host
  mirror_.reset();
  if (window_) {
    const NSView& content = *window_->contentView();
    loop_->invalidateTimersOf([&content](const NSObject& target) {
      const auto* view = dynamic_cast<const NSView*>(&target);
      return view && view->isDescendantOf(content);
    });
  }
  window_.reset();
  effect_.reset();
  display_.reset();
}

NativeWindow PluginEditor::window() const {
  const DisplayWindow* shown = window_->displayWindow();
  return shown ? shown->native() : NativeWindow{};
}

void PluginEditor::portEvent(uint32_t port, float value) {
  const NSRunLoop::Scope scope(loop_);
  mirror_->hostSet(port, value);
}

bool PluginEditor::idle() {
  const NSRunLoop::Scope scope(loop_);
  loop_->runTurn();
  mirror_->settle(window_->isInGesture());
  return window_->displayWindow() != nullptr;
}
