#pragma once

#include <memory>
#include <vector>

#include "NSObject.h"

/// Objects of eight classes that answer one message in their own way, made where the compiler of the
/// benchmark cannot see their classes: a call on one is a real virtual call, a send a real send.
class Counter : public NSObject {
 public:
  virtual void count(NSObject* sender) = 0;
};

std::vector<std::shared_ptr<Counter>> makeCounters(size_t number);
