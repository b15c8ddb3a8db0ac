// The one symbol that hosts look for in the plug-ins' shared object.

#include <lv2/core/lv2.h>
#include <pthread.h>

#include <string>
#include <vector>

#include "EffectPlugin.h"
#include "NSException.h"
#include "PluginKinds.h"
#include "RegisterEffects.h"

namespace {

EffectPlugin& plugin(LV2_Handle handle) {
  return *static_cast<EffectPlugin*>(handle);
}

struct Entry {
  Component component;
  std::string uri;
  LV2_Descriptor descriptor;
};

const std::vector<Entry>& entries();

LV2_Handle instantiate(const LV2_Descriptor* descriptor, double rate, const char*,
                       const LV2_Feature* const* features) {
  std::unique_ptr<EffectPlugin> made;
  for (const Entry& entry : entries())
    if (&entry.descriptor == descriptor)
      NSGuardCallback("plug-in", [&] { made = EffectPlugin::make(entry.component, rate, features); });
  return made.release();  // the host's until cleanup
}

// JACK ends its clients' audio threads by cancelling them, at any instruction, and C++ can be unwound at
// calls alone. So that waits until the block is done. The state alone does not keep a request off that is
// already on its way, the type does. No destructor restores them: those calls may not come back.
void run(LV2_Handle handle, uint32_t frames) {
  int type = PTHREAD_CANCEL_DEFERRED;
  int state = PTHREAD_CANCEL_ENABLE;
  pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &type);
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
  plugin(handle).run(frames);
  pthread_setcancelstate(state, nullptr);
  pthread_setcanceltype(type, nullptr);
}

void cleanup(LV2_Handle handle) {
  const std::unique_ptr<EffectPlugin> last(&plugin(handle));
}

std::vector<Entry> makeEntries() {
  RegisterEffects();
  constexpr ComponentDescription ours{FourCharCode("aufx"), 0, FourCharCode("Tovn")};
  std::vector<Entry> all;
  for (Component component = FindNextComponent(nullptr, &ours); component;
       component = FindNextComponent(component, &ours))
    all.push_back({component, pluginUri(component), {}});
  for (Entry& entry : all)
    entry.descriptor = {
        entry.uri.c_str(),
        &instantiate,
        [](LV2_Handle handle, uint32_t port, void* data) { plugin(handle).connectPort(port, data); },
        [](LV2_Handle handle) { plugin(handle).activate(); },
        &run,
        nullptr,
        &cleanup,
        nullptr};
  return all;
}

const std::vector<Entry>& entries() {
  static const std::vector<Entry> all = makeEntries();
  return all;
}

}  // namespace

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index) {
  return index < entries().size() ? &entries()[index].descriptor : nullptr;
}
