#include "QuilloLinux/Accessibility/AtspiActions.h"

#include <algorithm>
#include <array>
#include <utility>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr auto standardActions = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"activate", "AXPress"},
    {"check", "AXPress"},
    {"click", "AXPress"},
    {"decrease", "AXDecrement"},
    {"decrement", "AXDecrement"},
    {"dodefault", "AXPress"},
    {"expand or contract", "AXPress"},
    {"increase", "AXIncrement"},
    {"increment", "AXIncrement"},
    {"jump", "AXPress"},
    {"menu", "AXShowMenu"},
    {"open", "AXPress"},
    {"press", "AXPress"},
    {"select", "AXPress"},
    {"showcontextmenu", "AXShowMenu"},
    {"showmenu", "AXShowMenu"},
    {"switch", "AXPress"},
    {"toggle", "AXPress"},
    {"uncheck", "AXPress"},
});

std::string_view standardAction(std::string_view lowercasedName) {
  using Row = std::pair<std::string_view, std::string_view>;
  const auto found = std::ranges::find(standardActions, lowercasedName, &Row::first);
  return found == standardActions.end() ? std::string_view() : found->second;
}

/// What says nothing to a person: focus and scrolling, actions of an ancestor, internal names with a dot, and names
/// without a letter.
bool isNoise(std::string_view lowercasedName) {
  const auto isPunctuation = [](unsigned char c) { return c < 'a' || (c > 'z' && c < 0x80); };
  return std::ranges::all_of(lowercasedName, isPunctuation) || lowercasedName == "setfocus" ||
         lowercasedName == "clickancestor" || lowercasedName.starts_with("scroll") ||
         lowercasedName.find('.') != std::string_view::npos;
}

std::string normalized(std::string_view name) {
  return lowercased(bringingToOneLine(std::string(name)));
}

}  // namespace

bool isKnownAction(std::string_view name) {
  const std::string action = normalized(name);
  const bool hasLetter = std::ranges::any_of(action, [](char c) { return c >= 'a' && c <= 'z'; });
  return !standardAction(action).empty() || (hasLetter && isNoise(action));
}

std::vector<std::string> mapActions(const std::vector<std::string>& names) {
  std::vector<std::string> actions;
  for (const std::string& name : names) {
    const std::string action = normalized(name);
    if (isNoise(action)) continue;
    const std::string_view standard = standardAction(action);
    std::string mapped = standard.empty() ? bringingToOneLine(name) : std::string(standard);
    if (std::ranges::count(actions, mapped) == 0) actions.push_back(std::move(mapped));
  }
  return actions;
}

}  // namespace quillo
