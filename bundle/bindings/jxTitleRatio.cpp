#include "jxTitleRatio.h"

#include "MacRoman.h"
#include "NumberText.h"

namespace {

constexpr size_t longestTitle = 99;

}  // namespace

std::optional<jxRatio> jxTitleRatio(const std::string& title) {
  const auto bytes = foundation::macRomanFromUtf8(title);
  if (!bytes || bytes->size() > longestTitle) return std::nullopt;
  const std::string_view text = *bytes;
  const foundation::ParsedNumber over = foundation::numberPrefix(text);
  if (!over.found || over.length >= text.size() || text[over.length] != '/') return std::nullopt;
  const foundation::ParsedNumber under = foundation::numberPrefix(text.substr(over.length + 1));
  if (!under.found) return std::nullopt;
  return jxRatio{static_cast<float>(over.value), static_cast<float>(under.value)};
}
