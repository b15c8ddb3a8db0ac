#pragma once

#include <memory>
#include <string>

#include "SEL.h"

class Class;

/// Root of everything that takes messages by name. Objects are shared: whoever "retains" one holds a
/// std::shared_ptr, whoever merely knows one (targets, delegates, owners) holds a raw pointer.
/// Main thread only.
class NSObject : public std::enable_shared_from_this<NSObject> {
 public:
  NSObject() = default;
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;
  virtual ~NSObject();

  /// The class record of this object's own class. Each class that registers messages, outlets or
  /// attributes overrides it to return its record().
  virtual const Class& isa() const;
  static const Class& record();

  bool isKindOfClass(const Class& ancestor) const;
  bool respondsToSelector(SEL selector) const;

  /// Sends the message. An operation without argument drops `object`; one that takes one gets null from
  /// performSelector. The result is that of operations that answer a bool, else true. A message that the
  /// object does not answer is a programming error: it is reported to the assertion handler, which throws.
  bool performSelector(SEL selector);
  bool performSelector_withObject(SEL selector, NSObject* object);
  bool performSelector_withObject_withObject(SEL selector, NSObject* first, NSObject* second);

  /// Identity, unless a class defines equality by value.
  virtual bool isEqual(const NSObject* other) const;

 protected:
  /// shared_from_this() as the derived type.
  template <class T>
  static std::shared_ptr<T> shared(T* self) {
    return std::static_pointer_cast<T>(self->shared_from_this());
  }
};

/// Sends an optional message: nothing happens, and the answer is false, when the receiver is null or does
/// not answer it.
bool NSPerformIfAnswered(NSObject* receiver, SEL selector, NSObject* object);
