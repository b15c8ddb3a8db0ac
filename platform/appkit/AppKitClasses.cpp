#include "AppKitClasses.h"

#include <array>

#include "NSBox.h"
#include "NSImageView.h"
#include "NSTextField.h"

void NSRegisterAppKitClasses() {
  static const std::array<const Class*, 5> classes{&NSView::record(), &NSControl::record(),
                                                   &NSImageView::record(), &NSBox::record(),
                                                   &NSTextField::record()};
  Class::addToList(classes);
}
