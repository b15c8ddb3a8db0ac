#include "NSObject.h"

#include "Class.h"
#include "NSAssertionHandler.h"

NSObject::~NSObject() = default;

const Class& NSObject::isa() const {
  return record();
}

const Class& NSObject::record() {
  static const Class c = Class::root("NSObject");
  return c;
}

bool NSObject::isKindOfClass(const Class& ancestor) const {
  return isa().isSubclassOf(ancestor);
}

bool NSObject::respondsToSelector(SEL selector) const {
  return isa().method(selector) != nullptr;
}

bool NSObject::performSelector(SEL selector) {
  return performSelector_withObject_withObject(selector, nullptr, nullptr);
}

bool NSObject::performSelector_withObject(SEL selector, NSObject* object) {
  return performSelector_withObject_withObject(selector, object, nullptr);
}

bool NSObject::performSelector_withObject_withObject(SEL selector, NSObject* first, NSObject* second) {
  if (const Class::Method* method = isa().method(selector)) return method->call(*this, first, second);
  NSAssertionHandler::currentHandler().handleFailureInMethod(
      "performSelector:withObject:", this, "NSObject", 0,
      "unrecognized selector " + NSStringFromSelector(selector) + " sent to " + isa().name());
  return false;
}

bool NSObject::isEqual(const NSObject* other) const {
  return this == other;
}

bool NSPerformIfAnswered(NSObject* receiver, SEL selector, NSObject* object) {
  if (!receiver || !receiver->respondsToSelector(selector)) return false;
  receiver->performSelector_withObject(selector, object);
  return true;
}
