#include "QuilloLinux/Accessibility/AtspiElements.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "QuilloLinux/Accessibility/AtspiMixedText.h"
#include "QuilloLinux/Accessibility/AtspiTableRows.h"
#include "QuilloLinux/Accessibility/AtspiVisibleCells.h"

namespace quillo {
namespace {

/// Mark the tokens of elements that are made up here.
constexpr std::uint64_t rowBit = std::uint64_t{1} << 63U;
constexpr std::uint64_t textBit = std::uint64_t{1} << 62U;

bool isMadeRow(AccessibilityElement element) {
  return (element.token & rowBit) != 0;
}
bool isMadeText(AccessibilityElement element) {
  return (element.token & textBit) != 0;
}

std::optional<ArtifactRect> unionOf(const std::optional<ArtifactRect>& a, const ArtifactRect& b) {
  if (!a) return b;
  const double x = std::min(a->minX(), b.minX());
  const double y = std::min(a->minY(), b.minY());
  return ArtifactRect{
      .x = x, .y = y, .width = std::max(a->maxX(), b.maxX()) - x, .height = std::max(a->maxY(), b.maxY()) - y};
}

}  // namespace

bool AtspiElements::isMadeUp(AccessibilityElement element) {
  return isMadeRow(element) || isMadeText(element);
}

AtspiWindowPlacement AtspiElements::placementOf(const AtspiNodeRecord& record) {
  if (reader_.toolkit() != AtspiToolkit::gtk4) return {};
  if (isTopLevelWindow(record.role) && record.extents &&
      (!target_.windowTitle || record.name == *target_.windowTitle)) {
    if (const auto placement = placeWindow(*record.extents, target_)) {
      windowOrigin_ = placement->origin;
      return *placement;
    }
  }
  return {.origin = windowOrigin_.value_or(ArtifactPoint{.x = target_.windowFrame.x, .y = target_.windowFrame.y}),
          .frame = {}};
}

AccessibilityResult<AtspiElements::View*> AtspiElements::view(AccessibilityElement element) {
  if (const auto known = views_.find(element.token); known != views_.end()) return &known->second;
  if (isMadeRow(element)) return viewOfRow(element);
  if (isMadeText(element)) return viewOfText(element);
  if (element.token >= objects_.size()) return std::unexpected(AccessibilityErrorCode::illegalArgument);
  const AtspiNodeRecord& record = reader_.record(element.token);
  if (record.error != AccessibilityErrorCode::success) return std::unexpected(record.error);
  View view{mapElement(record, reader_.toolkit(), placementOf(record)), std::nullopt};
  return &views_.emplace(element.token, std::move(view)).first->second;
}

AccessibilityResult<AtspiElements::View*> AtspiElements::viewOfRow(AccessibilityElement element) {
  const std::size_t index = element.token & ~rowBit;
  if (index >= madeRows_.size()) return std::unexpected(AccessibilityErrorCode::illegalArgument);
  View row;
  row.children.emplace();
  std::optional<ArtifactRect> frame;
  bool isVisible = false;
  for (const std::uint64_t cell : madeRows_[index].cells) {
    row.children->push_back({cell});
    const auto cellView = view({cell});
    if (!cellView) continue;
    const AtspiMappedElement& mapped = (*cellView)->mapped;
    if (const auto cellFrame = mapped.frame()) frame = unionOf(frame, *cellFrame);
    const auto* visible = mapped.attribute("AXVisible");
    isVisible = isVisible || (visible != nullptr && std::get<bool>(*visible));
  }
  row.mapped.attributes.emplace_back("AXRole", std::string(madeRows_[index].isOutlineRow ? "AXOutlineRow" : "AXRow"));
  row.mapped.attributes.emplace_back("AXVisible", isVisible);
  if (frame) {
    row.mapped.attributes.emplace_back("AXPosition", ArtifactPoint{.x = frame->x, .y = frame->y});
    row.mapped.attributes.emplace_back("AXSize", ArtifactSize{.width = frame->width, .height = frame->height});
  }
  return &views_.emplace(element.token, std::move(row)).first->second;
}

AccessibilityResult<AtspiElements::View*> AtspiElements::viewOfText(AccessibilityElement element) {
  const std::size_t index = element.token & ~textBit;
  if (index >= madeTexts_.size()) return std::unexpected(AccessibilityErrorCode::illegalArgument);
  View text;
  text.children.emplace();
  text.mapped.attributes.emplace_back("AXRole", std::string("AXStaticText"));
  text.mapped.attributes.emplace_back("AXValue", madeTexts_[index].words);
  const auto parent = view({madeTexts_[index].parent});
  for (const std::string_view name : {"AXVisible", "AXPosition", "AXSize"}) {
    const auto* value = parent ? (*parent)->mapped.attribute(name) : nullptr;
    if (value != nullptr) text.mapped.attributes.emplace_back(name, *value);
  }
  return &views_.emplace(element.token, std::move(text)).first->second;
}

std::optional<AccessibilityElement> AtspiElements::makeText(std::uint64_t parent, std::string words) {
  if (words.empty()) return std::nullopt;
  madeTexts_.push_back({parent, std::move(words)});
  return AccessibilityElement{textBit | (madeTexts_.size() - 1)};
}

std::vector<AccessibilityElement> AtspiElements::rowsOf(std::span<const std::uint64_t> cells, bool areOutlineRows) {
  std::vector<AtspiLooseCell> loose;
  loose.reserve(cells.size());
  for (const std::uint64_t cell : cells) {
    const AtspiNodeRecord& record = reader_.record(cell);
    loose.push_back({cell, record.tableRow, record.extents, isColumnHeader(record.role)});
  }
  std::vector<AccessibilityElement> rows;
  for (auto& members : makeRows(loose)) {
    rows.push_back({rowBit | madeRows_.size()});
    madeRows_.push_back({std::move(members), areOutlineRows});
  }
  return rows;
}

std::vector<std::uint64_t> AtspiElements::readSheet(std::uint64_t token, const AtspiNodeRecord& record) {
  constexpr std::size_t maximumCellCount = 4000;
  const auto visible = readVisibleCells(bus_, objects_[token], *record.extents, maximumCellCount, control_);
  if (!visible) return {};
  std::vector<std::uint64_t> cells;
  for (const AtspiObject& cell : visible->cells) cells.push_back(objects_.tokenOf(cell));
  reader_.read(cells);
  // What is empty says nothing but the name of its place.
  std::erase_if(cells, [&](std::uint64_t cell) {
    const AtspiNodeRecord* known = reader_.knownRecord(cell);
    const bool isEmpty = known != nullptr && known->text && known->text->characterCount == 0;
    return isEmpty && !known->is(AtspiState::focused) && !known->is(AtspiState::selected);
  });
  sheets_.push_back({visible->rowCount, visible->columnCount});
  return cells;
}

std::vector<AccessibilityElement> AtspiElements::readChildren(std::uint64_t token, const AtspiNodeRecord& record,
                                                              std::vector<std::uint64_t> tokens) {
  const bool isOutline = record.role == AtspiRole::tree;
  const bool holdsLooseCells = isTable(record.role) || isOutline;
  std::vector<std::string> words = wordsBetweenChildren(record, reader_.toolkit());
  const std::size_t readCount = std::min(tokens.size(), readAheadCount);
  reader_.read(std::span(tokens).first(readCount));

  std::vector<AccessibilityElement> members;
  members.reserve(tokens.size());
  std::vector<std::uint64_t> cells;
  const auto flushCells = [&] {
    const auto rows = rowsOf(cells, isOutline);
    members.insert(members.end(), rows.begin(), rows.end());
    cells.clear();
  };
  const auto addWordsBefore = [&](std::size_t child) {
    if (words.empty()) return;
    if (const auto text = makeText(token, std::move(words[child]))) members.push_back(*text);
  };
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    addWordsBefore(i);
    const AtspiNodeRecord* child = i < readCount ? reader_.knownRecord(tokens[i]) : nullptr;
    if (child != nullptr && child->error == AccessibilityErrorCode::success) {
      if (reader_.isHidden(*child)) {
        ++unreadHiddenCount_;
        continue;
      }
      if (holdsLooseCells && isTableCell(child->role)) {
        cells.push_back(tokens[i]);
        continue;
      }
    }
    flushCells();
    members.push_back({tokens[i]});
  }
  flushCells();
  addWordsBefore(tokens.size());
  return members;
}

AccessibilityResult<const std::vector<AccessibilityElement>*> AtspiElements::children(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  if (!(*found)->children) {
    const AtspiNodeRecord& record = reader_.record(element.token);
    // Copied, because reading more may move the records.
    std::vector<std::uint64_t> tokens = record.children;
    if (record.hasTooManyChildren && record.extents) tokens = readSheet(element.token, record);
    if (record.childrenError != AccessibilityErrorCode::success && tokens.empty()) {
      return std::unexpected(record.childrenError);
    }
    // Under a password field stand the pieces of its text.
    auto members = record.role == AtspiRole::passwordText
                       ? std::vector<AccessibilityElement>{}
                       : readChildren(element.token, reader_.record(element.token), std::move(tokens));
    (*view(element))->children = std::move(members);
  }
  return &*(*view(element))->children;
}

AccessibilityResult<const AtspiMappedElement*> AtspiElements::element(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  return &(*found)->mapped;
}

std::vector<std::string> AtspiElements::warnings() const {
  std::vector<std::string> warnings;
  warnings.reserve(sheets_.size() + 1);
  for (const Sheet& sheet : sheets_) {
    warnings.push_back(fmt::format(
        "Of a sheet, only the {} rows and {} columns on the screen were read, and of these what is not empty.",
        sheet.rowCount, sheet.columnCount));
  }
  if (unreadHiddenCount_ == 1) {
    warnings.emplace_back("1 element that the application keeps hidden was left out with everything inside it.");
  } else if (unreadHiddenCount_ > 1) {
    warnings.push_back(
        fmt::format("{} elements that the application keeps hidden were left out with everything inside them.",
                    unreadHiddenCount_));
  }
  return warnings;
}

}  // namespace quillo
