#include "QuilloCore/Semantics/TextLines.h"

#include <algorithm>

namespace quillo {
namespace {

constexpr std::size_t blanksPerLevel = 2;
constexpr std::size_t blanksOfBlock = 4;

}  // namespace

void TextLines::addIndented(std::size_t level, std::string_view line) {
  lines_.emplace_back(std::min(level, deepestLevel) * blanksPerLevel, ' ').append(line);
}

void TextLines::addBlock(std::size_t level, const std::vector<std::string>& lines) {
  const std::size_t indentation = std::min(level, deepestLevel) * blanksPerLevel + blanksOfBlock;
  for (const std::string& line : lines) lines_.emplace_back(indentation, ' ').append(line);
}

std::string TextLines::joined() const {
  std::size_t size = 0;
  for (const std::string& line : lines_) size += line.size() + 1;
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines_) {
    if (&line != &lines_.front()) text += '\n';
    text += line;
  }
  return text;
}

}  // namespace quillo
