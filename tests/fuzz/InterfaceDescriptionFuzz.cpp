// An interface description is any text: it makes an editor that can be opened, or one line says what is
// wrong.

#include "EditorStage.h"
#include "InterfaceDescription.h"
#include "Must.h"
#include "ScratchBundle.h"
#include "jxAppleAUView.h"

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

/// One bundle for the process, whose one description is the input.
const ScratchBundle& scratch() {
  static const ScratchBundle folder;
  static const auto bundle = [] {
    folder.write("Info.xml", ScratchBundle::info("FuzzOwner"));
    std::string error;
    auto made = folder.open(error);
    must(made != nullptr, error);
    made->loadLinked([](std::vector<const Class*>& classes) { classes = {&Owner::record()}; });
    return made;
  }();
  return folder;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  EditorStage stage;
  scratch().write("Resources/description.xml", {reinterpret_cast<const char*>(data), size});
  Owner owner;
  if (loadNibNamed_owner("description", owner)) {
    if (const auto view = owner.view) {  // as the factory and a host open it
      if (const Component component = registeredEffect(view->isa().name().substr(0, 4))) {
        stage.unit = openUnit(component);
        view->setAU(jxAUwrapper::wrapperWithAU(stage.unit.get()));
      }
      stage.show(view);
      stage.close();
    }
    must(stage.log.empty(),
         "a description that was taken can be used: " + (stage.log.empty() ? "" : stage.log[0]));
  } else {
    must(stage.log.size() == 1 && stage.log[0].starts_with(scratch().file("Resources/description.xml") + ":"),
         "one line says what is wrong");
    must(!owner.view, "nothing is left of a wrong description");
  }
  return 0;
}
