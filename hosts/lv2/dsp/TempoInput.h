#pragma once

#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

/// Reads the host's tempo out of what it sends to a time position port.
class TempoInput {
 public:
  /// Main thread.
  explicit TempoInput(const LV2_URID_Map& map);

  /// The last tempo that the sequence tells, in beats per minute, else `before`. Audio thread.
  float read(const LV2_Atom_Sequence& sequence, float before) const;

 private:
  float tempoOf(const uint8_t* object, const uint8_t* end, float before) const;
  float numberOf(LV2_URID type, const uint8_t* body, uint32_t size, float otherwise) const;

  LV2_URID object_, blank_, position_, beatsPerMinute_;
  LV2_URID float_, double_, int_, long_;
};
