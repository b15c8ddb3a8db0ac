#pragma once

#include <string>
#include <string_view>

/// One interned message name, such as "knobChanged:". Two selectors are equal exactly when their
/// addresses are, so a selector can be stored, compared and looked up as a plain pointer.
struct Selector {
  std::string name;
};
using SEL = const Selector*;

/// The selector of that name; the same pointer for the same name for the life of the process. Any thread.
SEL NSSelectorFromString(std::string_view name);

/// Its name; "(null)" for a null selector.
const std::string& NSStringFromSelector(SEL selector);
