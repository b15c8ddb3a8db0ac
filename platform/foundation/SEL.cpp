#include "SEL.h"

#include <map>
#include <mutex>

SEL NSSelectorFromString(std::string_view name) {
  static std::mutex mutex;
  // A map never moves its nodes, so the address of an entry is good for ever.
  static std::map<std::string, Selector, std::less<>> selectors;
  const std::lock_guard lock(mutex);
  auto found = selectors.find(name);
  if (found == selectors.end())
    found = selectors.emplace(std::string(name), Selector{std::string(name)}).first;
  return &found->second;
}

const std::string& NSStringFromSelector(SEL selector) {
  static const std::string null = "(null)";
  return selector ? selector->name : null;
}
