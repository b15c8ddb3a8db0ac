#include "Components.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "AUEffectBase.h"
#include "AUEventHub.h"
#include "AUOpenInstances.h"
#include "MacRoman.h"
#include "NSException.h"

struct ComponentRecord {
  ComponentDescription description;
  std::string macRomanName;
  SInt32 version;
  ComponentFactory factory;
};

namespace {

struct Registry {
  std::mutex mutex;
  std::vector<std::unique_ptr<ComponentRecord>> records;  // addresses stay
};

Registry& registry() {
  static Registry theRegistry;
  return theRegistry;
}

std::string macRomanName(std::string_view name) {
  std::string bytes;
  for (size_t i = 0; i < name.size();) {
    size_t length = 1;  // of the character that begins here
    while (i + length < name.size() && (name[i + length] & 0xC0) == 0x80) ++length;
    bytes += foundation::macRomanFromUtf8(name.substr(i, length)).value_or("?");
    i += length;
  }
  return bytes.substr(0, 255);
}

bool matches(const ComponentDescription& pattern, const ComponentDescription& d) {
  const auto agrees = [](OSType wanted, OSType has) { return wanted == 0 || wanted == has; };
  return agrees(pattern.componentType, d.componentType) &&
         agrees(pattern.componentSubType, d.componentSubType) &&
         agrees(pattern.componentManufacturer, d.componentManufacturer) &&
         ((pattern.componentFlags ^ d.componentFlags) & pattern.componentFlagsMask) == 0;
}

bool sameIdentity(const ComponentDescription& a, const ComponentDescription& b) {
  return a.componentType == b.componentType && a.componentSubType == b.componentSubType &&
         a.componentManufacturer == b.componentManufacturer;
}

}  // namespace

Component RegisterComponent(const ComponentDescription& description, std::string_view name, SInt32 version,
                            ComponentFactory factory) {
  const std::lock_guard lock(registry().mutex);
  auto& records = registry().records;
  const auto found = std::find_if(records.begin(), records.end(), [&](const auto& record) {
    return record->factory == factory && sameIdentity(record->description, description);
  });
  if (found != records.end()) return found->get();
  records.push_back(
      std::make_unique<ComponentRecord>(ComponentRecord{description, macRomanName(name), version, factory}));
  return records.back().get();
}

Component FindNextComponent(Component previous, const ComponentDescription* pattern) {
  if (!pattern) return nullptr;
  const std::lock_guard lock(registry().mutex);
  const auto& records = registry().records;
  auto at = records.begin();
  if (previous) {
    at = std::find_if(at, records.end(), [&](const auto& record) { return record.get() == previous; });
    if (at != records.end()) ++at;
  }
  at = std::find_if(at, records.end(),
                    [&](const auto& record) { return matches(*pattern, record->description); });
  return at == records.end() ? nullptr : at->get();
}

OSStatus GetComponentInfo(Component component, ComponentDescription* description, Handle name, Handle info,
                          Handle icon) {
  if (!component) return paramErr;
  if (description) *description = component->description;
  if (name) {
    const std::string& text = component->macRomanName;
    SetHandleSize(name, 1 + text.size());
    (*name)[0] = static_cast<char>(text.size());
    std::memcpy(*name + 1, text.data(), text.size());
  }
  SetHandleSize(info, 0);
  SetHandleSize(icon, 0);
  return noErr;
}

OSStatus GetComponentInfo(ComponentInstance instance, ComponentDescription* description, Handle name,
                          Handle info, Handle icon) {
  if (instance && !AUOpenInstances::contains(instance)) return badComponentInstance;
  return GetComponentInfo(instance ? instance->component() : nullptr, description, name, info, icon);
}

SInt32 GetComponentVersion(ComponentInstance instance) {
  const Component component =
      instance && AUOpenInstances::contains(instance) ? instance->component() : nullptr;
  return component ? component->version : 0;
}

OSStatus OpenAComponent(Component component, ComponentInstance* instance) {
  if (!component || !instance) return paramErr;
  std::unique_ptr<AUEffectBase> made;
  if (!NSGuardCallback("component factory", [&] { made = component->factory(); }) || !made)
    return badComponentInstance;
  made->setComponent(component);
  *instance = made.release();  // lives until CloseComponent
  return noErr;
}

OSStatus CloseComponent(ComponentInstance instance) {
  if (!instance) return paramErr;
  if (!AUOpenInstances::contains(instance)) return badComponentInstance;
  AUEventHub::shared().forgetInstance(instance->serial());
  const std::unique_ptr<AUEffectBase> last(instance);
  last->uninitialize();
  return noErr;
}
