#include "Tests/Support/TreeNotation.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <stdexcept>

namespace quillo::test {
namespace {

class LineParser {
 public:
  explicit LineParser(std::string_view line) : line_(line) {}

  NotationNode parse() {
    NotationNode node;
    node.kind = word();
    if (node.kind.empty()) fail();
    for (skipBlanks(); position_ < line_.size(); skipBlanks()) {
      if (line_[position_] == '\'') {
        node.title = quoted();
      } else if (line_[position_] == '[') {
        readFlags(node);
      } else {
        std::string key = word();
        if (key.empty() || position_ >= line_.size() || line_[position_] != '=') fail();
        ++position_;
        const bool isQuoted = position_ < line_.size() && line_[position_] == '\'';
        node.fields.emplace_back(std::move(key), isQuoted ? quoted() : bareValue());
      }
    }
    return node;
  }

 private:
  void skipBlanks() {
    while (position_ < line_.size() && line_[position_] == ' ') ++position_;
  }

  std::string until(std::string_view stops) {
    const std::size_t end = std::min(line_.find_first_of(stops, position_), line_.size());
    std::string text(line_.substr(position_, end - position_));
    position_ = end;
    return text;
  }

  std::string word() { return until(" =['"); }
  std::string bareValue() { return until(" "); }

  std::string quoted() {
    std::string text;
    for (++position_; position_ < line_.size() && line_[position_] != '\''; ++position_) {
      char c = line_[position_];
      if (c == '\\') {
        if (++position_ == line_.size()) fail();
        c = line_[position_];
        if (c == 'n') c = '\n';
        if (c == 'r') c = '\r';
        if (c == 't') c = '\t';
      }
      text += c;
    }
    if (position_ == line_.size()) fail();
    ++position_;
    return text;
  }

  void readFlags(NotationNode& node) {
    for (++position_;; ++position_) {
      skipBlanks();
      node.flags.push_back(until(",]"));
      if (position_ == line_.size()) fail();
      if (line_[position_] == ']') break;
    }
    ++position_;
  }

  [[noreturn]] void fail() const {
    throw std::invalid_argument("cannot read the tree line \"" + std::string(line_) + "\"");
  }

  std::string_view line_;
  std::size_t position_ = 0;
};

struct IndentedLine {
  std::size_t indentation;
  std::string_view text;
};

std::vector<IndentedLine> splitLines(std::string_view notation) {
  std::vector<IndentedLine> lines;
  while (!notation.empty()) {
    const std::size_t end = std::min(notation.find('\n'), notation.size());
    const std::string_view line = notation.substr(0, end);
    notation.remove_prefix(std::min(end + 1, notation.size()));
    const std::size_t indentation = line.find_first_not_of(' ');
    if (indentation != std::string_view::npos) lines.push_back({indentation, line.substr(indentation)});
  }
  const auto least = std::ranges::min_element(lines, {}, &IndentedLine::indentation);
  const std::size_t common = least == lines.end() ? 0 : least->indentation;
  for (auto& line : lines) line.indentation -= common;
  return lines;
}

std::vector<NotationNode> parseLevel(const std::vector<IndentedLine>& lines, std::size_t& next,
                                     std::size_t indentation) {
  std::vector<NotationNode> nodes;
  while (next < lines.size() && lines[next].indentation >= indentation) {
    if (lines[next].indentation != indentation) {
      throw std::invalid_argument("wrong indentation of \"" + std::string(lines[next].text) + "\"");
    }
    NotationNode node = LineParser(lines[next].text).parse();
    ++next;
    node.children = parseLevel(lines, next, indentation + 2);
    nodes.push_back(std::move(node));
  }
  return nodes;
}

}  // namespace

bool NotationNode::has(std::string_view flag) const {
  return std::ranges::find(flags, flag) != flags.end();
}

std::optional<std::string> NotationNode::field(std::string_view key) const {
  for (const auto& [name, value] : fields) {
    if (name == key) return value;
  }
  return std::nullopt;
}

std::vector<NotationNode> parseTrees(std::string_view notation) {
  const std::vector<IndentedLine> lines = splitLines(notation);
  std::size_t next = 0;
  return parseLevel(lines, next, 0);
}

NotationNode parseTree(std::string_view notation) {
  std::vector<NotationNode> trees = parseTrees(notation);
  if (trees.size() != 1) throw std::invalid_argument("expected exactly one root");
  return std::move(trees.front());
}

std::vector<std::string> splitParts(std::string_view value, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : value) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

ArtifactRect parseFrame(std::string_view value) {
  const std::vector<std::string> numbers = splitParts(value, ',');
  if (numbers.size() != 4) throw std::invalid_argument("a frame has four numbers, not " + std::string(value));
  return {.x = std::stod(numbers[0]),
          .y = std::stod(numbers[1]),
          .width = std::stod(numbers[2]),
          .height = std::stod(numbers[3])};
}

std::string accessibilityRoleOf(const std::string& kind) {
  if (kind.starts_with("AX")) return kind;
  if (kind == "text") return "AXStaticText";
  std::string role = "AX" + kind;
  role[2] = static_cast<char>(std::toupper(static_cast<unsigned char>(role[2])));
  return role;
}

}  // namespace quillo::test
