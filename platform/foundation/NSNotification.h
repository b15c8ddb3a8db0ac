#pragma once

#include "NSObject.h"

/// What a delegate is told after the fact: `object` is the sender.
class NSNotification : public NSObject {
 public:
  explicit NSNotification(NSObject* sender) : object_(sender) {}
  NSObject* object() const { return object_; }

 private:
  NSObject* object_;
};
