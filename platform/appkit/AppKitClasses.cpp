#include "AppKitClasses.h"

#include <array>

#include "NSBox.h"
#include "NSColorCoding.h"
#include "NSImageView.h"
#include "NSPopUpButton.h"
#include "NSTextField.h"

void NSRegisterAppKitClasses() {
  static const std::array classes{&NSView::record(),     &NSControl::record(),   &NSImageView::record(),
                                  &NSBox::record(),      &NSTextField::record(), &NSPopUpButton::record(),
                                  &archivedColorRecord()};
  Class::addToList(classes);
}
