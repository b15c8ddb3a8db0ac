#include "TempoInput.h"

#include <lv2/atom/util.h>
#include <lv2/time/time.h>

#include <cmath>

TempoInput::TempoInput(const LV2_URID_Map& map) {
  const auto id = [&map](const char* uri) { return map.map(map.handle, uri); };
  object_ = id(LV2_ATOM__Object);
  blank_ = id(LV2_ATOM__Blank);
  position_ = id(LV2_TIME__Position);
  beatsPerMinute_ = id(LV2_TIME__beatsPerMinute);
  float_ = id(LV2_ATOM__Float);
  double_ = id(LV2_ATOM__Double);
  int_ = id(LV2_ATOM__Int);
  long_ = id(LV2_ATOM__Long);
}

bool TempoInput::isPosition(const LV2_Atom& atom) const {
  return (atom.type == object_ || atom.type == blank_) &&
         reinterpret_cast<const LV2_Atom_Object&>(atom).body.otype == position_;
}

float TempoInput::numberOf(const LV2_Atom& atom, float otherwise) const {
  if (atom.type == float_) return reinterpret_cast<const LV2_Atom_Float&>(atom).body;
  if (atom.type == double_) return static_cast<float>(reinterpret_cast<const LV2_Atom_Double&>(atom).body);
  if (atom.type == int_) return static_cast<float>(reinterpret_cast<const LV2_Atom_Int&>(atom).body);
  if (atom.type == long_) return static_cast<float>(reinterpret_cast<const LV2_Atom_Long&>(atom).body);
  return otherwise;
}

float TempoInput::read(const LV2_Atom_Sequence& sequence, float before) const {
  float tempo = before;
  LV2_ATOM_SEQUENCE_FOREACH(&sequence, event) {
    if (!isPosition(event->body)) continue;
    const LV2_Atom* told = nullptr;
    lv2_atom_object_get(reinterpret_cast<const LV2_Atom_Object*>(&event->body), beatsPerMinute_, &told, 0);
    if (told) tempo = numberOf(*told, tempo);
  }
  return std::isfinite(tempo) ? tempo : before;
}
