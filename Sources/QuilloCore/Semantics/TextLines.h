#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The lines of a text under construction.
class TextLines {
 public:
  /// Levels of indentation beyond this one look like it: windows are never so deep, and hostile trees stay small.
  static constexpr std::size_t deepestLevel = 128;

  void add(std::string_view line) { lines_.emplace_back(line); }

  /// Two blanks for every level, then the line.
  void addIndented(std::size_t level, std::string_view line);

  /// Lines of captured text, each four blanks deeper than the level.
  void addBlock(std::size_t level, const std::vector<std::string>& lines);

  /// Joined by line feeds, without a final one.
  std::string joined() const;

 private:
  std::vector<std::string> lines_;
};

}  // namespace quillo
