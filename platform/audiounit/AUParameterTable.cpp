#include "AUParameterTable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "AUUnitText.h"
#include "MacRoman.h"
#include "NumberText.h"

AUParameterTable::AUParameterTable(std::span<const AUParameterRow> rows)
    : rows_(rows), values_(std::make_unique<std::atomic<Float32>[]>(rows.size())) {
  for (size_t i = 0; i < rows.size(); ++i) {
    setValueAt(i, rows[i].defaultValue);
    names_.emplace_back(CFStringCreateWithCString(rows[i].name, kCFStringEncodingUTF8));
  }
}

size_t AUParameterTable::indexOf(AudioUnitParameterID id) const {
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), id,
                                      [](const AUParameterRow& row, auto wanted) { return row.id < wanted; });
  return found != rows_.end() && found->id == id ? static_cast<size_t>(found - rows_.begin()) : notFound;
}

Float32 AUParameterTable::clamped(size_t index, Float32 value) const {
  return std::clamp(value, rows_[index].minValue, rows_[index].maxValue);
}

AudioUnitParameterInfo AUParameterTable::infoAt(size_t index) const {
  const AUParameterRow& row = rows_[index];
  AudioUnitParameterInfo info;
  const std::string name = foundation::macRomanFromUtf8(row.name).value_or("?");
  std::memcpy(info.name, name.data(), std::min(name.size(), sizeof info.name - 1));
  if (row.flags & kAudioUnitParameterFlag_HasCFNameString) {
    info.cfNameString = names_[index].get();
    if (row.flags & kAudioUnitParameterFlag_CFNameRelease) CFRetain(info.cfNameString);
  }
  info.unit = row.unit;
  info.minValue = row.minValue;
  info.maxValue = row.maxValue;
  info.defaultValue = row.defaultValue;
  info.flags = row.flags;
  return info;
}

CFArrayRef AUParameterTable::valueStringsAt(size_t index) const {
  const auto names = rows_[index].valueNames;
  if (names.empty()) return nullptr;
  return CFArrayCreateWithStrings({names.begin(), names.end()});
}

std::string AUParameterTable::textOfValue(size_t index, Float32 value) const {
  const AUParameterRow& row = rows_[index];
  if (!row.valueNames.empty() && value >= row.minValue && value <= row.maxValue) {
    const auto position = static_cast<size_t>(std::lround(value - row.minValue));
    if (position < row.valueNames.size()) return row.valueNames[position];
  }
  const std::string unit = AUUnitText(row.unit);
  const std::string number = std::isfinite(value) ? foundation::exactText(value) : "?";
  return unit.empty() ? number : number + " " + unit;
}

bool AUParameterTable::choose(const AUPresetRow& preset) {
  bool changed = false;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (!(rows_[i].flags & kAudioUnitParameterFlag_IsWritable)) continue;
    Float32 value = rows_[i].defaultValue;
    for (const AUPresetRow::Value& given : preset.values)
      if (given.id == rows_[i].id) value = clamped(i, given.value);
    changed |= value != valueAt(i);
    setValueAt(i, value);
  }
  return changed;
}
