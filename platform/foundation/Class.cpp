#include "Class.h"

#include <algorithm>
#include <map>

namespace {

/// Of records with one name (two copies of a module) the one listed last counts.
std::map<std::string, std::vector<const Class*>, std::less<>>& classList() {
  static std::map<std::string, std::vector<const Class*>, std::less<>> list;
  return list;
}

template <class Row>
const Row* lastNamed(const std::vector<Row>& rows, std::string_view name) {
  const auto found =
      std::find_if(rows.rbegin(), rows.rend(), [&](const Row& row) { return row.name == name; });
  return found == rows.rend() ? nullptr : &*found;
}

}  // namespace

bool Class::isSubclassOf(const Class& ancestor) const {
  for (const Class* c = this; c; c = c->super_)
    if (c == &ancestor) return true;
  return false;
}

const Class::Method* Class::method(SEL selector) const {
  const auto found = methods_.find(selector);
  return found == methods_.end() ? nullptr : &found->second;
}

const Class::Outlet* Class::outletNamed(std::string_view name) const {
  return lastNamed(outlets_, name);
}

const Class::Attribute* Class::attributeNamed(std::string_view name) const {
  return lastNamed(attributes_, name);
}

void Class::addToList(std::span<const Class* const> classes) {
  for (const Class* c : classes) {
    auto& sameName = classList()[c->name()];
    std::erase(sameName, c);
    sameName.push_back(c);
  }
}

void Class::removeFromList(std::span<const Class* const> classes) {
  for (const Class* c : classes) {
    const auto found = classList().find(c->name());
    if (found == classList().end()) continue;
    std::erase(found->second, c);
    if (found->second.empty()) classList().erase(found);
  }
}

const Class* Class::named(std::string_view name) {
  const auto found = classList().find(name);
  return found == classList().end() ? nullptr : found->second.back();
}

std::string foundation::parseAttribute(std::string_view text, const Class*& value) {
  value = Class::named(text);
  return value ? "" : "the name of a class";
}
