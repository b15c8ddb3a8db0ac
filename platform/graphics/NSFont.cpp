#include "NSFont.h"

#include <array>

#include "FontFile.h"
#include "NSLog.h"

namespace {

constexpr std::array<NSFont::Entry, 4> table{{
    {"LucidaGrande", "DejaVuSans.ttf", 1.0f, 0.967f, 0.211f},
    {"LucidaGrande-Bold", "DejaVuSans-Bold.ttf", 1.0f, 0.967f, 0.211f},
    {"Futura Medium", "LeagueSpartan-Regular.otf", 1.08f, 1.039f, 0.260f},
    {"Skia", "Cabin-Regular.otf", 1.0f, 0.967f, 0.211f},
}};

}  // namespace

std::shared_ptr<NSFont> NSFont::fontWithName_size(std::string_view name, float points) {
  for (const Entry& entry : table)
    if (entry.name == name) return std::make_shared<NSFont>(entry, points);
  NSLogOnce("no font \"" + std::string(name) + "\", LucidaGrande is used");
  return std::make_shared<NSFont>(table[0], points);
}

FontFile* NSFont::file() const {
  return FontFile::named(entry_.file);
}
