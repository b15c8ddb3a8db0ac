#include "jxAppleAUGUI_ViewFactory.h"

#include <algorithm>
#include <array>
#include <utility>

#include "InterfaceDescription.h"
#include "NSException.h"
#include "NSLog.h"

namespace {

struct Row {
  OSType subtype;
  OSType editor;
};

constexpr std::array<Row, 15> editors{{
    {FourCharCode("mcmp"), FourCharCode("mcmp")},
    {FourCharCode("dcmp"), FourCharCode("dcmp")},
    {FourCharCode("lmtr"), FourCharCode("lmtr")},
    {FourCharCode("filt"), FourCharCode("filt")},
    {FourCharCode("lpas"), FourCharCode("lpas")},
    {FourCharCode("hpas"), FourCharCode("lpas")},
    {FourCharCode("lshf"), FourCharCode("lpas")},
    {FourCharCode("hshf"), FourCharCode("lpas")},
    {FourCharCode("bpas"), FourCharCode("bpas")},
    {FourCharCode("pmeq"), FourCharCode("pmeq")},
    {FourCharCode("mrev"), FourCharCode("mrev")},
    {FourCharCode("Qmrv"), FourCharCode("mrev")},
    {FourCharCode("dely"), FourCharCode("dely")},
    {FourCharCode("sdly"), FourCharCode("sdly")},
    {FourCharCode("tmpt"), FourCharCode("tmpt")},
}};

std::string descriptionName(OSType editor) {
  std::string name;
  for (const int shift : {24, 16, 8, 0}) name += static_cast<char>(editor >> shift & 255);
  return name + "_cocoaUI";
}

}  // namespace

const Class& jxAppleAUGUI_ViewFactory::isa() const {
  return record();
}

const Class& jxAppleAUGUI_ViewFactory::record() {
  static const Class c = Class::of<jxAppleAUGUI_ViewFactory>("jxAppleAUGUI_ViewFactory", NSObject::record())
                             .outlet<&jxAppleAUGUI_ViewFactory::uiFreshlyLoadedView>("uiFreshlyLoadedView");
  return c;
}

std::shared_ptr<NSView> jxAppleAUGUI_ViewFactory::uiViewForAudioUnit_withSize(AudioUnit unit, NSSize) {
  ComponentDescription description;
  GetComponentInfo(unit, &description, nullptr, nullptr, nullptr);
  if (description.componentType != FourCharCode("aufx")) return nullptr;
  if (description.componentManufacturer != FourCharCode("appl") &&
      description.componentManufacturer != FourCharCode("Tovn"))
    return nullptr;
  const auto row = std::find_if(editors.begin(), editors.end(), [&](const Row& candidate) {
    return candidate.subtype == description.componentSubType;
  });
  if (row == editors.end()) return nullptr;

  const bool made = NSGuardCallback("making an editor", [&] {
    if (!loadNibNamed_owner(descriptionName(row->editor), *this)) {
      NSLog("Unable to load nib for view.");
      return;
    }
    const auto wrapper = jxAUwrapper::wrapperWithAU(unit);
    if (uiFreshlyLoadedView) uiFreshlyLoadedView->setAU(wrapper);
  });
  const auto view = std::exchange(uiFreshlyLoadedView, nullptr);
  return made ? view : nullptr;
}
