#include "QuilloCore/Semantics/IdleContainers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/NamingTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// What a line is to a reader who looks for where something begins and ends. Powers of two, to be joined to sets.
enum LineKind : std::uint8_t {
  proseText = 1,  ///< a text; two beside each other are two paragraphs, since the pieces of one are joined
  proseLink = 2,
  control = 4,  ///< what a text beside it may explain
  headline = 8,
  block = 16,  ///< has lines below it
  other = 32,
};

constexpr std::uint8_t noHeading = UINT8_MAX;

/// The lines of a subtree that stand at one level.
struct Lines {
  std::uint32_t count = 0;
  ElementIndex first = noElement;  // noElement also where an unavailable element is told
  ElementIndex last = noElement;
  std::uint8_t firstKind = 0;
  std::uint8_t lastKind = 0;
  std::uint8_t kinds = 0;                       // of all
  std::uint8_t headingLevel = noHeading;        // the highest rank among all
  std::uint8_t headingLevelBehind = noHeading;  // the highest rank among all but the first
};

void append(Lines& lines, const Lines& further) {
  if (further.count == 0) return;
  if (lines.count == 0) {
    lines = further;
    return;
  }
  lines.count += further.count;
  lines.last = further.last;
  lines.lastKind = further.lastKind;
  lines.kinds |= further.kinds;
  lines.headingLevel = std::min(lines.headingLevel, further.headingLevel);
  lines.headingLevelBehind = std::min(lines.headingLevelBehind, further.headingLevel);
}

/// Whether a reader sees that the second of two lines belongs to something else than the first.
bool isBorderTold(std::uint8_t first, std::uint8_t second) {
  constexpr auto alwaysApart = std::uint8_t{headline | block};
  return first == 0 || second == 0 || (first & alwaysApart) != 0 || (second & alwaysApart) != 0 ||
         (first == proseText && second == proseText);
}

class IdleContainers {
 public:
  IdleContainers(const RenderContext& context, RenderPlan& plan)
      : context_(context), forest_(context.forest()), plan_(plan), inside_(forest_.size()), isGroup_(forest_.size()) {}

  void run() {
    for (std::size_t i = forest_.size(); i-- > 0;) {
      const ElementIndex element = forest_.preorder()[i];
      if (context_.isInScope(element) && !plan_.emptyTabularRowIDs.contains(element)) visit(element);
    }
  }

 private:
  /// Everything inside has been visited, and is told for good but for the groups that are the element's children.
  void visit(ElementIndex element) {
    isGroup_[element] = isAnonymousContainer(element);
    inside_[element] = linesInside(element);
    const Lines& inside = inside_[element];
    if (plan_.isSilent(element)) return;
    const bool isOne = inside.count == 1 && inside.first != noElement;
    if (isOne && isGroup(inside.first) && !isGroup(element)) {
      plan_.silentElementIDs.insert(inside.first);  // its parent holds the same lines together
      inside_[element] = Lines(inside_[inside.first]);
    } else if (isOne && isTold(element, inside.first)) {
      plan_.silentElementIDs.insert(inside.first);
      inside_[element] = {};
    } else if (isOne && isNamedBy(element, inside.first)) {
      plan_.printedNames.insert_or_assign(element, std::string(textOf(inside.first)));
      plan_.silentElementIDs.insert(inside.first);
      inside_[element] = {};
    }
    const bool isIdle = inside.count == 0   ? isGroup(element)
                        : inside.count == 1 ? isIdleAroundOne(element, inside)
                                            : false;
    if (isIdle && forest_.parent(element) != noElement) plan_.silentElementIDs.insert(element);
  }

  bool isIdleAroundOne(ElementIndex element, const Lines& inside) const {
    const bool isProse = inside.kinds == proseText || inside.kinds == proseLink;
    return isGroup(element) || isAnonymousItem(element) ||
           (context_[element].role == list && isProse && isNameless(element));
  }

  Lines linesInside(ElementIndex element) {
    const auto children = forest_.children(element);
    silenceGroupsAmong(children, &IdleContainers::isToldByLines);
    silenceGroupsAmong(children, &IdleContainers::isToldByPlace);
    Lines lines;
    for (const ElementForest::Child& child : children) append(lines, linesOf(child));
    return lines;
  }

  using Rule = bool (IdleContainers::*)(const Lines& group, const Lines& before, const Lines& behind) const;

  void silenceGroupsAmong(std::span<const ElementForest::Child> children, Rule rule) {
    Lines before;
    for (std::size_t i = 0; i < children.size(); ++i) {
      const ElementIndex child = children[i].element;
      if (child != noElement && isGroupOfSeveral(child) &&
          (this->*rule)(inside_[child], before, nextLines(children.subspan(i + 1)))) {
        plan_.silentElementIDs.insert(child);
      }
      append(before, linesOf(children[i]));
    }
  }

  bool isGroupOfSeveral(ElementIndex element) const {
    return inside_[element].count > 1 && !plan_.isSilent(element) && isGroup(element);
  }

  Lines linesOf(const ElementForest::Child& child) const {
    if (child.element == noElement) return lineOf(noElement, other);
    if (!context_.isInScope(child.element) || plan_.emptyTabularRowIDs.contains(child.element)) return {};
    if (plan_.isSilent(child.element)) return inside_[child.element];
    Lines line = lineOf(child.element, kindOf(child.element));
    if (line.firstKind == headline) {
      constexpr std::int64_t lowestLevel = 100;
      const std::int64_t level = context_[child.element].properties->headingLevel.value_or(1);
      line.headingLevel = static_cast<std::uint8_t>(std::clamp<std::int64_t>(level, 1, lowestLevel));
    }
    return line;
  }

  static Lines lineOf(ElementIndex element, LineKind kind) {
    return {.count = 1, .first = element, .last = element, .firstKind = kind, .lastKind = kind, .kinds = kind};
  }

  /// The next lines behind a child; empty at the end.
  Lines nextLines(std::span<const ElementForest::Child> further) const {
    for (const ElementForest::Child& child : further) {
      if (const Lines lines = linesOf(child); lines.count > 0) return lines;
    }
    return {};
  }

  LineKind kindOf(ElementIndex element) const {
    if (context_[element].role == heading) return headline;
    if (inside_[element].count > 0) return block;
    switch (context_[element].role) {
      case text: return proseText;
      case link: return proseLink;
      case button:
      case disclosure:
      case checkbox:
      case radioButton:
      case switchControl:
      case textField:
      case textArea:
      case searchField:
      case comboBox:
      case popUpButton:
      case slider:
      case stepper:
      case progressIndicator: return control;
      default: return other;
    }
  }

  static bool areBordersTold(const Lines& group, const Lines& before, const Lines& behind) {
    return isBorderTold(before.lastKind, group.firstKind) && isBorderTold(group.lastKind, behind.firstKind);
  }

  /// Whether the lines of a section, or of text and links, say themselves where they begin and end.
  bool isToldByLines(const Lines& group, const Lines& before, const Lines& behind) const {
    if (group.firstKind == headline && endsAtHeading(group, behind)) return true;
    return (group.kinds & ~(proseText | proseLink)) == 0 && areBordersTold(group, before, behind);
  }

  /// Whether a group of other lines is the only one in its place, and holds nothing together that would fall apart.
  bool isToldByPlace(const Lines& group, const Lines& before, const Lines& behind) const {
    const bool isBesideGroup = isGroup(before.last) || isGroup(behind.first);
    const bool mayExplain = (group.kinds & control) != 0 && (group.kinds & proseText) != 0;
    // A heading at the end of a header titles what follows.
    const bool endsOpenSection = group.headingLevel != noHeading && group.lastKind != headline && behind.count > 0 &&
                                 headingAtBeginOf(behind) > group.headingLevel;
    return areBordersTold(group, before, behind) && !isBesideGroup && !mayExplain && !endsOpenSection;
  }

  /// Whether a section that begins with a heading has none of the same rank inside, and ends where one follows.
  bool endsAtHeading(const Lines& section, const Lines& behind) const {
    const std::uint8_t level = *levelOf(section.first);
    return section.headingLevelBehind > level && (behind.count == 0 || headingAtBeginOf(behind) <= level);
  }

  /// The rank of the heading that the next lines begin with, also inside a group.
  std::uint8_t headingAtBeginOf(const Lines& lines) const {
    const ElementIndex first = isGroup(lines.first) ? inside_[lines.first].first : lines.first;
    return first == noElement ? noHeading : levelOf(first).value_or(noHeading);
  }

  std::optional<std::uint8_t> levelOf(ElementIndex element) const {
    if (context_[element].role != heading) return std::nullopt;
    return linesOf({.element = element}).headingLevel;
  }

  bool isGroup(ElementIndex element) const { return element != noElement && isGroup_[element]; }

  /// Whether the line of what is around tells the picture that is all there is inside.
  bool isTold(ElementIndex around, ElementIndex inside) const {
    const InterfaceSemanticRole role = context_[around].role;
    const InterfaceElement& picture = context_[inside];
    return (role == link || role == button || role == menuItem || role == tab) && picture.role == image &&
           !printedName(around).empty() && printedName(inside).empty() && inside_[inside].count == 0 &&
           !picture.isProtected && !picture.content && stateWords(picture).empty() && !picture.value &&
           meaningfulActions(picture).empty() && printedDetails(context_, plan_, inside).empty();
  }

  /// Whether the only text inside a nameless control is what the control is called.
  bool isNamedBy(ElementIndex around, ElementIndex inside) const {
    const InterfaceElement& element = context_[around];
    return isNamedByItsTexts(element.role) && element.role != heading && element.role != text && !element.isProtected &&
           !element.content && !hasRowReference(element) && context_.primaryText(around).empty() &&
           !isAnonymousItem(around) && context_.isPlainText(inside) && inside_[inside].count == 0;
  }

  /// What the line of a plain text says.
  std::string_view textOf(ElementIndex index) const {
    const auto merged = plan_.mergedTextByElementID.find(index);
    return merged != plan_.mergedTextByElementID.end() ? std::string_view(merged->second) : printedName(index);
  }

  /// The list around it says that what stands in it are items.
  bool isAnonymousItem(ElementIndex index) const {
    const ElementIndex parent = forest_.parent(index);
    return context_[index].role == listItem && parent != noElement && context_[parent].role == list &&
           !plan_.isSilent(parent) && isNameless(index);
  }

  bool isAnonymousContainer(ElementIndex index) const {
    const InterfaceSemanticRole role = context_[index].role;
    return (role == section || role == group || role == unknown) && isNameless(index);
  }

  bool isNameless(ElementIndex index) const {
    return printedName(index).empty() && saysNothingButName(context_, plan_, index);
  }

  std::string_view printedName(ElementIndex index) const {
    return plan_.printedName(index, context_.primaryText(index));
  }

  const RenderContext& context_;
  const ElementForest& forest_;
  RenderPlan& plan_;
  std::vector<Lines> inside_;
  std::vector<bool> isGroup_;  // nameless ones, printed or not
};

}  // namespace

void silenceIdleContainers(const RenderContext& context, RenderPlan& plan) {
  IdleContainers(context, plan).run();
}

}  // namespace quillo
