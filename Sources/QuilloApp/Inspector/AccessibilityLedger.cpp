#include "QuilloApp/Inspector/AccessibilityLedger.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/InterfaceRoleNames.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {
namespace {

using Line = AccessibilityLedger::Line;

std::int32_t asNumber(std::size_t index) {
  return static_cast<std::int32_t>(index);
}

std::optional<ArtifactRect> visibleFrame(const InterfaceElement& element) {
  const auto& bounds = element.bounds;
  if (!bounds || !bounds->isFinite() || bounds->width <= 0 || bounds->height <= 0) return std::nullopt;
  return bounds;
}

/// Numbers, truth values and lists as they read; nothing of geometry and ranges, which only programs read.
std::string wordsFor(const AccessibilityAttributeValue& value) {
  return std::visit(
      []<class Value>(const Value& held) -> std::string {
        if constexpr (std::is_same_v<Value, std::int64_t>) return std::to_string(held);
        if constexpr (std::is_same_v<Value, double>) return formatNumber(held);
        if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
          std::string joined;
          for (const std::string& each : held) joined.append(joined.empty() ? "" : ", ").append(each);
          return joined;
        }
        return {};
      },
      value);
}

/// Whether what is out of sight below `parent` is so because nobody has opened it.
bool isClosed(const Line& parent) {
  using enum InterfaceSemanticRole;
  const InterfaceSemanticRole role = parent.element->role;
  return parent.isInClosedMenu || role == menuItem || role == popUpButton || role == comboBox ||
         (role == menu && parent.element->visibility == InterfaceVisibility::offscreen);
}

std::string searchKey(const InterfaceElement& element, std::string_view value) {
  const std::string_view name = primaryText(element);
  std::string key(roleName(element.role));
  key.append("\n").append(name).append("\n").append(value);
  for (const ElementDetail& detail : distinctDetails(element, name)) key.append("\n").append(detail.text);
  return lowercased(key);
}

std::vector<std::string> words(std::string_view query) {
  const std::string folded = lowercased(query);
  std::vector<std::string> found;
  std::size_t begin = 0;
  while ((begin = folded.find_first_not_of(" \t\n", begin)) != std::string::npos) {
    const std::size_t end = std::min(folded.find_first_of(" \t\n", begin), folded.size());
    found.push_back(folded.substr(begin, end - begin));
    begin = end;
  }
  return found;
}

}  // namespace

std::string ledgerValue(const InterfaceElement& element) {
  if (element.isProtected) return {};
  if (element.content && isPrintable(*element.content)) return *element.content;
  if (printsStringValue(element, primaryText(element))) return std::string(printableStringValue(element));
  if (element.properties->valueDescription) return *element.properties->valueDescription;
  if (element.properties->rowValues) return wordsFor(*element.properties->rowValues);
  // What is checked or not says so as its state.
  return element.value && !element.state.checked ? wordsFor(*element.value) : std::string();
}

std::string ledgerLineText(const InterfaceElement& element, std::string_view value) {
  std::string text(roleName(element.role));
  const std::string name = onOneLine(primaryText(element));
  if (!name.empty()) text.append(" “").append(name).append("”");
  if (!value.empty()) text.append(": ").append(onOneLine(value));
  return text;
}

AccessibilityLedger::AccessibilityLedger(std::shared_ptr<const InterfaceObservation> observation)
    : observation_(std::move(observation)) {
  const auto& elements = observation_->elements;
  std::unordered_map<std::string_view, std::int32_t> numbers;
  numbers.reserve(elements.size());
  lines_.reserve(elements.size());
  searchKeys_.reserve(elements.size());
  std::vector<std::int32_t> levels;
  levels.reserve(elements.size());
  std::vector<std::size_t> childCounts(elements.size() + 1);
  for (const InterfaceElement& element : elements) {
    // The root that stands for the application alone was made up, and says nothing.
    if (!element.sourceNodeID && element.id == observation_->rootElementID && element.id == "application-root")
      continue;
    Line line{.element = &element, .value = ledgerValue(element), .frame = visibleFrame(element)};
    if (element.parentID) {
      // Only a parent that stands before is one, so no line can be its own ancestor.
      if (const auto parent = numbers.find(*element.parentID); parent != numbers.end()) line.parent = parent->second;
    }
    if (line.parent >= 0) {
      line.depth = lines_[static_cast<std::size_t>(line.parent)].depth + 1;
      if (levels[static_cast<std::size_t>(line.parent)] == deepestLevel)
        line.parent = lines_[static_cast<std::size_t>(line.parent)].parent;
    }
    line.isInClosedMenu = line.parent >= 0 && element.visibility == InterfaceVisibility::offscreen &&
                          isClosed(lines_[static_cast<std::size_t>(line.parent)]);
    levels.push_back(line.parent < 0 ? 0 : levels[static_cast<std::size_t>(line.parent)] + 1);
    line.row = asNumber(childCounts[static_cast<std::size_t>(line.parent) + 1]++);
    numbers.emplace(element.id, asNumber(lines_.size()));
    searchKeys_.push_back(searchKey(element, line.value));
    lines_.push_back(std::move(line));
  }

  firstChild_.reserve(childCounts.size() + 1);
  firstChild_.push_back(0);
  std::partial_sum(childCounts.begin(), childCounts.end(), std::back_inserter(firstChild_));
  children_.resize(lines_.size());
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    const Line& line = lines_[index];
    children_[firstChild_[static_cast<std::size_t>(line.parent) + 1] + static_cast<std::size_t>(line.row)] =
        asNumber(index);
  }
}

std::span<const std::int32_t> AccessibilityLedger::children(std::int32_t number) const {
  const auto parent = static_cast<std::size_t>(number) + 1;
  return std::span(children_).subspan(firstChild_[parent], firstChild_[parent + 1] - firstChild_[parent]);
}

std::string_view AccessibilityLedger::name(std::int32_t number) const {
  return primaryText(*line(number).element);
}

std::optional<std::int32_t> AccessibilityLedger::lineAt(const ArtifactPoint& point) const {
  std::optional<std::int32_t> found;
  double smallest = 0;
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    const Line& line = lines_[index];
    if (!line.frame || line.element->visibility == InterfaceVisibility::hidden ||
        line.element->visibility == InterfaceVisibility::offscreen)
      continue;
    const ArtifactRect& frame = *line.frame;
    if (point.x < frame.minX() || point.x >= frame.maxX() || point.y < frame.minY() || point.y >= frame.maxY())
      continue;
    const double area = frame.width * frame.height;
    if (found && area > smallest) continue;
    found = asNumber(index);
    smallest = area;
  }
  return found;
}

std::vector<std::int32_t> AccessibilityLedger::linesMatching(std::string_view query) const {
  std::vector<std::int32_t> found;
  const std::vector<std::string> sought = words(query);
  if (sought.empty()) return found;
  for (std::size_t index = 0; index < searchKeys_.size(); ++index) {
    const std::string& key = searchKeys_[index];
    if (std::ranges::all_of(sought, [&](const std::string& word) { return key.contains(word); }))
      found.push_back(asNumber(index));
  }
  return found;
}

std::string AccessibilityLedger::text(std::int32_t number) const {
  const Line& shown = line(number);
  if (shown.element->isProtected) return {};
  return shown.value.empty() ? std::string(primaryText(*shown.element)) : shown.value;
}

std::string AccessibilityLedger::branchText(std::int32_t number) const {
  std::string text;
  std::vector<std::pair<std::int32_t, std::size_t>> pending{{number, 0}};
  while (!pending.empty()) {
    const auto [next, level] = pending.back();
    pending.pop_back();
    const Line& shown = line(next);
    text.append(2 * level, ' ').append(ledgerLineText(*shown.element, shown.value)).append("\n");
    const auto below = children(next);
    for (std::size_t index = below.size(); index-- > 0;) pending.emplace_back(below[index], level + 1);
  }
  return text;
}

}  // namespace quillo
