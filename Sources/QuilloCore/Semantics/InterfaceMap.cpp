#include "QuilloCore/Semantics/InterfaceMap.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/NamingTexts.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Semantics/PrintedDetails.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

class MapWalk {
 public:
  MapWalk(const RenderContext& context, const RenderPlan& plan, TextLines& lines)
      : context_(context),
        forest_(context.forest()),
        plan_(plan),
        lines_(lines),
        tableOf_(forest_.size(), noElement),
        outlineLevelOf_(forest_.size(), 0) {}

  void printTree(ElementIndex root) {
    enter(root, 0);
    while (!path_.empty()) {
      Visit& visit = path_.back();
      const auto children = forest_.children(visit.element);
      if (visit.nextChild == children.size()) {
        path_.pop_back();
        continue;
      }
      const ElementForest::Child child = children[visit.nextChild++];
      if (child.element == noElement) {
        lines_.addIndented(visit.childLevel,
                           fmt::format("- Unavailable interface element [{}]", bareOrQuoted(*child.missingID, "]\"")));
      } else {
        enter(child.element, visit.childLevel);
      }
    }
  }

 private:
  struct Visit {
    ElementIndex element;
    std::size_t nextChild;
    std::size_t childLevel;
  };

  void enter(ElementIndex index, std::size_t level) {
    if (!context_.isInScope(index) || plan_.emptyTabularRowIDs.contains(index)) return;
    noteSurroundings(index);
    const InterfaceElement& element = context_[index];
    if (hasRowReference(element)) printColumns(index, level);
    const bool isPrinted = !plan_.isSilent(index);
    if (isPrinted) print(index, level);
    path_.push_back({index, 0, isPrinted ? level + 1 : level});
  }

  /// The table and the outline rows around an element.
  void noteSurroundings(ElementIndex index) {
    const ElementIndex parent = forest_.parent(index);
    if (parent == noElement) return;
    const InterfaceSemanticRole role = context_[parent].role;
    tableOf_[index] = role == table || role == tree ? parent : tableOf_[parent];
    outlineLevelOf_[index] = role == tree ? 0 : outlineLevelOf_[parent] + static_cast<int>(role == treeItem);
  }

  void print(ElementIndex index, std::size_t level) {
    const ElementLineOptions options = {.isEditable = plan_.compoundEditableControlIDs.contains(index),
                                        .printedName = plan_.printedName(index, context_.primaryText(index))};
    lines_.addIndented(level, "- " + mapLine(context_, plan_, index, options));
    const InterfaceElement& element = context_[index];
    for (const ElementDetail& detail : printedDetails(context_, plan_, index)) printDetail(detail, level + 1);
    if (element.role == row || element.role == treeItem) printPlaceInOutline(index, level + 1);
    if (announcesWithheldContent(index)) lines_.addIndented(level + 1, "content: <redacted protected content>");
  }

  void printDetail(const ElementDetail& detail, std::size_t level) {
    if (!hasLineBreak(detail.text)) {
      lines_.addIndented(level, fmt::format("{}: {}", detail.label, quoted(detail.text)));
      return;
    }
    lines_.addIndented(level, fmt::format("{}:", detail.label));
    std::vector<std::string> block(1);
    appendBlockText(block, detail.text);
    lines_.addBlock(level, block);
  }

  /// Once before the first row of a table, and again when the headers change.
  void printColumns(ElementIndex index, std::size_t level) {
    const auto& headers = context_[index].properties->columnHeaders;
    if (!headers || std::ranges::none_of(*headers, hasVisibleText)) return;
    const std::vector<std::string>*& printed = columnsOfTable_[tableOf_[index]];
    if (printed != nullptr && *printed == *headers) return;
    printed = &*headers;
    std::string line = "columns: ";
    for (const std::string& header : *headers) {
      if (&header != &headers->front()) line += ", ";
      line += header.empty() ? "\"\"" : bareOrQuoted(header, ",\"");
    }
    lines_.addIndented(level, line);
  }

  /// What the indentation does not show: the level of a row in a flat outline, and rows missing before this one.
  void printPlaceInOutline(ElementIndex index, std::size_t level) {
    const InterfaceElementProperties& properties = *context_[index].properties;
    if (properties.disclosureLevel.value_or(0) > outlineLevelOf_[index]) {
      lines_.addIndented(level, fmt::format("disclosure level: {}", *properties.disclosureLevel));
    }
    if (!properties.index) return;
    const auto [expected, isFirst] = nextIndexOfTable_.try_emplace(tableOf_[index], 0);
    const bool isExpected = *properties.index == expected->second || (isFirst && *properties.index <= 1);
    if (!isExpected) lines_.addIndented(level, fmt::format("flat accessibility index: {}", *properties.index));
    expected->second = *properties.index < INT64_MAX ? *properties.index + 1 : *properties.index;
  }

  /// Once for a protected element and all it contains.
  bool announcesWithheldContent(ElementIndex index) const {
    const ElementIndex parent = forest_.parent(index);
    return context_[index].isProtected && (parent == noElement || !context_[parent].isProtected);
  }

  const RenderContext& context_;
  const ElementForest& forest_;
  const RenderPlan& plan_;
  TextLines& lines_;
  std::vector<Visit> path_;
  std::vector<ElementIndex> tableOf_;
  std::vector<std::int64_t> outlineLevelOf_;
  std::unordered_map<ElementIndex, const std::vector<std::string>*> columnsOfTable_;
  std::unordered_map<ElementIndex, std::int64_t> nextIndexOfTable_;
};

}  // namespace

std::string mapLine(const RenderContext& context, const RenderPlan& plan, ElementIndex element,
                    ElementLineOptions options) {
  if (hasRowReference(context[element])) return rowReference(context[element]);
  if (const auto merged = plan.mergedTextByElementID.find(element); merged != plan.mergedTextByElementID.end()) {
    return displayRole(context[element]) + " " + quoted(merged->second);  // its members have nothing but their text
  }
  return elementLine(context[element], context.primaryText(element), options);
}

std::string stateLine(const RenderContext& context, const RenderPlan& plan, ElementIndex element) {
  const bool isTold = !context.primaryText(element).empty() || hasRowReference(context[element]) ||
                      !isNamedByItsTexts(context[element].role);
  if (isTold) return mapLine(context, plan, element);
  constexpr std::size_t longestName = 200;  // bytes after which no further text is added
  constexpr std::size_t elementsAsked = 64;
  const auto inside = context.forest().descendants(element);
  std::string name;
  for (const ElementIndex text : inside.first(std::min(inside.size(), elementsAsked))) {
    if (!context.isPlainTextLeaf(text) || name.size() > longestName) continue;
    if (!name.empty()) name += ' ';
    name += context.primaryText(text);
  }
  return elementLine(context[element], name);
}

void appendInterfaceMap(const RenderContext& context, const RenderPlan& plan, TextLines& lines) {
  lines.add("");
  lines.add("## Interface map");
  const ElementForest& forest = context.forest();
  MapWalk walk(context, plan, lines);
  if (forest.root() != noElement) walk.printTree(forest.root());

  std::vector<ElementIndex> additionalRoots;
  for (ElementIndex i = 0; i < forest.size(); ++i) {
    if (i != forest.root() && forest.parent(i) == noElement && context.isInScope(i)) additionalRoots.push_back(i);
  }
  if (additionalRoots.empty()) return;
  lines.add("");
  lines.add("### Additional interface elements");
  for (const ElementIndex root : additionalRoots) walk.printTree(root);
}

}  // namespace quillo
