#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo::test {

/// One line of the notation in which tests write trees.
struct NotationNode {
  std::string kind;                                         ///< "button", "AXButton"
  std::optional<std::string> title;                         ///< 'Reply'
  std::vector<std::string> flags;                           ///< [focused, disabled]
  std::vector<std::pair<std::string, std::string>> fields;  ///< key=value, key='quoted value'
  std::vector<NotationNode> children;

  bool has(std::string_view flag) const;
  std::optional<std::string> field(std::string_view key) const;
};

/// Parses a tree, one node a line, children two blanks deeper than their parent:
///
///     window 'Inbox'
///       button 'Reply' [focused] help='Answer the sender'
///       AXTextField value='It\'s two\nlines' id=7
///
/// A quoted text knows the escapes \n, \r, \t, \' and \\ . Empty lines are skipped, and a common indentation of all
/// lines is ignored. Throws std::invalid_argument naming the line that it cannot read.
std::vector<NotationNode> parseTrees(std::string_view notation);

/// As `parseTrees`, for exactly one root.
NotationNode parseTree(std::string_view notation);

/// The parts of a field's value; at least one, which may be empty.
std::vector<std::string> splitParts(std::string_view value, char separator);

/// Four numbers, "x,y,width,height". Throws std::invalid_argument.
ArtifactRect parseFrame(std::string_view value);

/// "button" is AXButton, "text" is AXStaticText; a role is itself.
std::string accessibilityRoleOf(const std::string& kind);

}  // namespace quillo::test
