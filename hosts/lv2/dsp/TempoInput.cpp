#include "TempoInput.h"

#include <lv2/atom/util.h>
#include <lv2/time/time.h>

#include <cmath>
#include <cstring>

namespace {

/// Some hosts align their buffers to four bytes only, where atoms want eight.
template <class T>
T at(const uint8_t* place) {
  T value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

}  // namespace

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

float TempoInput::numberOf(LV2_URID type, const uint8_t* body, uint32_t size, float otherwise) const {
  if (type == float_ && size >= sizeof(float)) return at<float>(body);
  if (type == double_ && size >= sizeof(double)) return static_cast<float>(at<double>(body));
  if (type == int_ && size >= sizeof(int32_t)) return static_cast<float>(at<int32_t>(body));
  if (type == long_ && size >= sizeof(int64_t)) return static_cast<float>(at<int64_t>(body));
  return otherwise;
}

float TempoInput::tempoOf(const uint8_t* object, const uint8_t* end, float before) const {
  if (at<LV2_Atom_Object_Body>(object).otype != position_) return before;
  float tempo = before;
  for (const uint8_t* place = object + sizeof(LV2_Atom_Object_Body);
       place + sizeof(LV2_Atom_Property_Body) <= end;) {
    const auto property = at<LV2_Atom_Property_Body>(place);
    const uint8_t* value = place + sizeof property;
    if (property.value.size > end - value) break;
    if (property.key == beatsPerMinute_)
      tempo = numberOf(property.value.type, value, property.value.size, tempo);
    place = value + lv2_atom_pad_size(property.value.size);
  }
  return tempo;
}

float TempoInput::read(const LV2_Atom_Sequence& sequence, float before) const {
  const auto* start = reinterpret_cast<const uint8_t*>(&sequence);
  const uint8_t* end = start + sizeof(LV2_Atom) + sequence.atom.size;
  float tempo = before;
  for (const uint8_t* place = start + sizeof sequence; place + sizeof(LV2_Atom_Event) <= end;) {
    const auto atom = at<LV2_Atom_Event>(place).body;
    const uint8_t* body = place + sizeof(LV2_Atom_Event);
    if (atom.size > end - body) break;
    if ((atom.type == object_ || atom.type == blank_) && atom.size >= sizeof(LV2_Atom_Object_Body))
      tempo = tempoOf(body, body + atom.size, tempo);
    place = body + lv2_atom_pad_size(atom.size);
  }
  return std::isfinite(tempo) ? tempo : before;
}
