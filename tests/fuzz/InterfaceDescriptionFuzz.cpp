// An interface description is any text: it makes an editor that can be opened, or one line says what is
// wrong.

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "EffectArgument.h"
#include "FuzzStage.h"
#include "InterfaceDescription.h"
#include "Must.h"
#include "NSLog.h"
#include "jxAppleAUView.h"

namespace fs = std::filesystem;

namespace {

class Owner : public NSObject {
 public:
  static const Class& record() {
    static const Class c =
        Class::of<Owner>("FuzzOwner", NSObject::record()).outlet<&Owner::view>("uiFreshlyLoadedView");
    return c;
  }
  const Class& isa() const override { return record(); }

  std::shared_ptr<jxAppleAUView> view;
};

/// A bundle of its own in a folder that goes with the process, whose one description is the input.
class ScratchBundle {
 public:
  ScratchBundle() {
    fs::create_directories(folder_ / "Contents/Resources");
    std::ofstream(folder_ / "Contents/Info.xml")
        << R"(<bundle identifier="fuzz" version="1" principalClass="FuzzOwner" module="none"/>)";
    std::string error;
    bundle_ = NSBundle::bundleWithPath(folder_.string(), error);
    must(bundle_ != nullptr, error);
    bundle_->loadLinked([](std::vector<const Class*>& classes) { classes = {&Owner::record()}; });
  }
  ~ScratchBundle() { fs::remove_all(folder_); }

  std::string description() const { return bundle_->resourcePath() + "/description.xml"; }

 private:
  fs::path folder_ = fs::temp_directory_path() / ("tovin-fuzz-" + std::to_string(getpid()) + ".bundle");
  std::shared_ptr<NSBundle> bundle_;
};

/// As the factory and a host do it, with the effect that the class of the editor is for.
void use(const std::shared_ptr<jxAppleAUView>& view) {
  const OffscreenDisplay display;
  VirtualClock clock;
  std::string error;
  const Component component = effectFromArgument(view->isa().name().substr(0, 4), error);
  const EffectInstance effect = component ? openEffect(component) : nullptr;
  if (effect) view->setAU(jxAUwrapper::wrapperWithAU(effect.get()));
  const auto window =
      std::make_shared<NSWindow>(view->frame(), NSTitledWindowMask, NSBackingStoreBuffered, false);
  window->setContentView(view);
  window->makeKeyAndOrderFront();
  clock.advance(NSRunLoop::currentRunLoop(), 0.2);
  window->close();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzBundle();
  static const ScratchBundle scratch;
  std::ofstream(scratch.description(), std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  std::vector<std::string> log;
  NSSetLogSink([&](std::string_view line) { log.emplace_back(line); });
  Owner owner;
  const bool loaded = loadNibNamed_owner("description", owner);
  if (loaded) {
    if (owner.view) use(owner.view);
    must(log.empty(), "a description that was taken can be used: " + (log.empty() ? "" : log[0]));
  } else {
    must(log.size() == 1 && log[0].starts_with(scratch.description() + ":"), "one line says what is wrong");
    must(!owner.view, "nothing is left of a wrong description");
  }
  owner.view.reset();
  NSSetLogSink(nullptr);
  return 0;
}
