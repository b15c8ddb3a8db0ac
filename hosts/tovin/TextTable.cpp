#include "TextTable.h"

#include <algorithm>

namespace {

size_t characters(const std::string& text) {
  return static_cast<size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace

std::string textTable(const std::vector<std::vector<std::string>>& rows,
                      const std::vector<bool>& rightAligned) {
  std::vector<size_t> widths(rightAligned.size(), 0);
  for (const auto& row : rows)
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], characters(row[i]));

  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      const std::string blanks(widths[i] - characters(row[i]), ' ');
      line += (i > 0 ? "  " : "") + (rightAligned[i] ? blanks + row[i] : row[i] + blanks);
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}
