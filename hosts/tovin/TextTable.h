#pragma once

#include <string>
#include <vector>

/// Rows of cells, printed in columns that are as wide as their widest cell. Cells are UTF-8; a column in
/// `rightAligned` stands at its right edge.
std::string textTable(const std::vector<std::vector<std::string>>& rows,
                      const std::vector<bool>& rightAligned);
