#include "EditorStage.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "EffectParameters.h"
#include "RegisterEffects.h"
#include "jxAUCompGraphView.h"
#include "jxAUFreqResponseView.h"
#include "mcmp_CrossoverView.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

/// Where a graph's axes have these values, in the graph's own points.
NSPoint pointOfAxes(const NSView& graph, float x, float y) {
  if (const auto* response = dynamic_cast<const jxAUFreqResponseView*>(&graph))
    return response->graphPositionForFreq_gain(x, y);
  if (const auto* compressor = dynamic_cast<const jxAUCompGraphView*>(&graph))
    return compressor->pointForIndB_outdB(x, y);
  return dynamic_cast<const mcmp_CrossoverView&>(graph).graphPositionForFreq(x);
}

}  // namespace

EditorStage::EditorStage(float scale) : Stage(scale) {
  bundle();
}

EditorStage::~EditorStage() {
  close();
}

const EditorBundle& EditorStage::bundle() {
  RegisterEffects();
  static std::string error;
  static const auto linked = EditorBundle::linked(TOVIN_BUNDLE, &TovinBundleClasses, error);
  if (!linked) throw std::runtime_error(error);
  return *linked;
}

bool EditorStage::open(Unit opened) {
  close();
  unit = std::move(opened);
  editor = bundle().editorFor(unit.get());
  if (!editor) return false;
  show(editor);
  return true;
}

void EditorStage::closeEditor() {
  if (window) window->close();
  window.reset();
  editor.reset();
  advance(2);  // an end-stop timer may still hold a knob
}

void EditorStage::close() {
  closeEditor();
  if (listener_) AUListenerDispose(std::exchange(listener_, nullptr));
  heard_.clear();
  unit.reset();
}

void EditorStage::set(unsigned parameter, float value) {
  const AudioUnitParameter address = addressOf(unit, parameter);
  AUParameterSet(listener_, this, &address, value, 0);
}

Lines EditorStage::heard() {
  turn();
  if (listener_) return std::exchange(heard_, {});
  const auto hear = [](void* self, void*, const AudioUnitEvent* event, UInt64, Float32 value) {
    const auto id = event->mArgument.mParameter.mParameterID;
    hearWrite(static_cast<EditorStage*>(self)->heard_, std::to_string(id), value);
  };
  AUEventListenerCreate(hear, this, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode, 0, 0, &listener_);
  for (const EffectParameter& p : effectParameters(unit.get())) {
    const auto event = AudioUnitEvent::parameterChange(addressOf(unit, p.id));
    AUEventListenerAddEventType(listener_, this, &event);
  }
  return {};
}

NSPoint EditorStage::place(const std::string& name) {
  std::string rest = name;
  NSView& view = viewNamed(rest);
  unsigned handle = 0;
  float x = 0, y = 0, dx = 0, dy = 0;
  NSPoint point;
  if (std::sscanf(rest.c_str(), "#%u+%f,%f", &handle, &dx, &dy) >= 1) {
    auto& graph = dynamic_cast<jxAUHandleGraphDisplay&>(view);
    graph.calculateHandles();
    point = graph.getPointForHandle(handle);
  } else if (std::sscanf(rest.c_str(), "@%f,%f+%f,%f", &x, &y, &dx, &dy) >= 2) {
    point = pointOfAxes(view, x, y);
  } else {
    return Stage::place(name);
  }
  return view.convertPoint_toView({point.x + dx, point.y + dy}, nullptr);
}

std::vector<Component> allEffects() {
  std::vector<Component> effects;
  const ComponentDescription ours{.componentType = FourCharCode("aufx"),
                                  .componentManufacturer = FourCharCode("Tovn")};
  for (Component c = FindNextComponent(nullptr, &ours); c; c = FindNextComponent(c, &ours))
    effects.push_back(c);
  return effects;
}
