#include "QuilloLinux/Accessibility/AtspiSession.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "QuilloCore/Support/Utf16.h"
#include "QuilloLinux/Accessibility/AtspiMixedText.h"
#include "QuilloLinux/Accessibility/AtspiRegistry.h"
#include "QuilloLinux/Accessibility/AtspiTableRows.h"
#include "QuilloLinux/Accessibility/AtspiVisibleCells.h"
#include "QuilloLinux/Accessibility/AtspiWindowRecognition.h"

namespace quillo {
namespace {

/// More elements than any capture keeps are not read ahead.
constexpr std::size_t readAheadCount = 10'000;

/// Mark the tokens of elements that are made up here.
constexpr std::uint64_t rowBit = std::uint64_t{1} << 63U;
constexpr std::uint64_t textBit = std::uint64_t{1} << 62U;

bool isMadeRow(AccessibilityElement element) {
  return (element.token & rowBit) != 0;
}
bool isMadeText(AccessibilityElement element) {
  return (element.token & textBit) != 0;
}

std::vector<AccessibilityValue> elementPage(std::span<const AccessibilityElement> members, std::int64_t index,
                                            std::int64_t maximumCount) {
  const auto size = static_cast<std::int64_t>(members.size());
  const std::int64_t begin = std::clamp<std::int64_t>(index, 0, size);
  const std::int64_t end = std::clamp<std::int64_t>(begin + std::max<std::int64_t>(maximumCount, 0), begin, size);
  std::vector<AccessibilityValue> page;
  page.reserve(static_cast<std::size_t>(end - begin));
  for (std::int64_t i = begin; i < end; ++i) page.emplace_back(members[static_cast<std::size_t>(i)]);
  return page;
}

std::optional<ArtifactRect> unionOf(const std::optional<ArtifactRect>& a, const ArtifactRect& b) {
  if (!a) return b;
  const double x = std::min(a->minX(), b.minX());
  const double y = std::min(a->minY(), b.minY());
  return ArtifactRect{
      .x = x, .y = y, .width = std::max(a->maxX(), b.maxX()) - x, .height = std::max(a->maxY(), b.maxY()) - y};
}

std::optional<ArtifactRect> frameOf(const AtspiMappedElement& mapped) {
  const auto* position = mapped.attribute("AXPosition");
  const auto* size = mapped.attribute("AXSize");
  if (position == nullptr || size == nullptr) return std::nullopt;
  const auto& point = std::get<ArtifactPoint>(*position);
  const auto& extent = std::get<ArtifactSize>(*size);
  return ArtifactRect{.x = point.x, .y = point.y, .width = extent.width, .height = extent.height};
}

}  // namespace

AtspiSession::AtspiSession(std::shared_ptr<AtspiConnections> connections, const WindowCaptureTarget& target,
                           std::shared_ptr<const AccessibilityCaptureControl> control,
                           std::function<void(const AtspiStatistics&)> statisticsObserver)
    : statisticsObserver_(std::move(statisticsObserver)),
      connections_(std::move(connections)),
      bus_(connections_->borrow()),
      target_(target),
      control_(std::move(control)) {
  if (bus_) reader_.emplace(*bus_, objects_, *control_);
}

AtspiSession::~AtspiSession() {
  if (statisticsObserver_ && bus_) statisticsObserver_(bus_->statistics());
  application_.reset();
  reader_.reset();
  connections_->giveBack(std::move(bus_));
}

AccessibilityResult<AccessibilityElement> AtspiSession::applicationElement(std::int32_t processIdentifier) {
  if (!bus_) return std::unexpected(AccessibilityErrorCode::apiDisabled);
  if (!application_) {
    auto roots = connections_->recentRoots(processIdentifier);
    if (!roots) {
      roots = rootsOfProcess(*bus_, *control_, processIdentifier);
      if (!roots->empty()) connections_->rememberRoots(processIdentifier, *roots);
    }
    if (!roots->empty()) application_.emplace(*bus_, objects_, *reader_, *control_, *roots);
  }
  if (!application_) return std::unexpected(AccessibilityErrorCode::invalidUIElement);
  return AccessibilityElement{application_->token()};
}

AccessibilityResult<std::int32_t> AtspiSession::processIdentifier(AccessibilityElement element) {
  if (!application_) return std::unexpected(AccessibilityErrorCode::invalidUIElement);
  if (isMadeRow(element) || isMadeText(element)) return target_.processIdentifier;
  // The bus's daemon knows the process behind the connection; of any other element it is enough that it is there.
  AccessibilityResult<std::int32_t> answer = std::unexpected(AccessibilityErrorCode::invalidUIElement);
  if (isApplication(element)) {
    bus_->call(makeProcessCall(objects_[element.token].busName,
                               [&](const AtspiReply& reply) {
                                 if (const auto process = reply.uint32()) answer = static_cast<std::int32_t>(*process);
                               }),
               *control_);
  } else {
    bus_->call({objects_[element.token],
                "org.a11y.atspi.Accessible",
                "GetRole",
                {},
                [&](const AtspiReply& reply) {
                  if (reply.isError()) {
                    answer = std::unexpected(reply.error());
                  } else {
                    answer = target_.processIdentifier;
                  }
                }},
               *control_);
  }
  return answer;
}

void AtspiSession::setMessagingTimeout(AccessibilityElement /*element*/, double seconds) {
  if (bus_) bus_->setTimeout(seconds);
}

bool AtspiSession::isApplication(AccessibilityElement element) const {
  return application_ && element.token == application_->token();
}

AtspiWindowPlacement AtspiSession::placementOf(const AtspiNodeRecord& record) {
  if (reader_->toolkit() != AtspiToolkit::gtk4) return {};
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

AccessibilityResult<AtspiSession::View*> AtspiSession::view(AccessibilityElement element) {
  if (const auto known = views_.find(element.token); known != views_.end()) return &known->second;
  if (!reader_) return std::unexpected(AccessibilityErrorCode::apiDisabled);
  if (isMadeRow(element)) return viewOfRow(element);
  if (isMadeText(element)) return viewOfText(element);
  if (element.token >= objects_.size()) return std::unexpected(AccessibilityErrorCode::illegalArgument);
  const AtspiNodeRecord& record = reader_->record(element.token);
  if (record.error != AccessibilityErrorCode::success) return std::unexpected(record.error);
  View view{mapElement(record, reader_->toolkit(), placementOf(record)), std::nullopt};
  return &views_.emplace(element.token, std::move(view)).first->second;
}

AccessibilityResult<AtspiSession::View*> AtspiSession::viewOfRow(AccessibilityElement element) {
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
    if (const auto cellFrame = frameOf(mapped)) frame = unionOf(frame, *cellFrame);
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

AccessibilityResult<AtspiSession::View*> AtspiSession::viewOfText(AccessibilityElement element) {
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

std::optional<AccessibilityElement> AtspiSession::makeText(std::uint64_t parent, std::string words) {
  if (words.empty()) return std::nullopt;
  madeTexts_.push_back({parent, std::move(words)});
  return AccessibilityElement{textBit | (madeTexts_.size() - 1)};
}

std::vector<AccessibilityElement> AtspiSession::rowsOf(std::span<const std::uint64_t> cells, bool areOutlineRows) {
  std::vector<AtspiLooseCell> loose;
  loose.reserve(cells.size());
  for (const std::uint64_t cell : cells) {
    const AtspiNodeRecord& record = reader_->record(cell);
    loose.push_back({cell, record.tableRow, record.extents, isColumnHeader(record.role)});
  }
  std::vector<AccessibilityElement> rows;
  for (auto& members : makeRows(loose)) {
    rows.push_back({rowBit | madeRows_.size()});
    madeRows_.push_back({std::move(members), areOutlineRows});
  }
  return rows;
}

std::vector<std::uint64_t> AtspiSession::readSheet(std::uint64_t token, const AtspiNodeRecord& record) {
  constexpr std::size_t maximumCellCount = 4000;
  const auto visible = readVisibleCells(*bus_, objects_[token], *record.extents, maximumCellCount, *control_);
  if (!visible) return {};
  std::vector<std::uint64_t> cells;
  for (const AtspiObject& cell : visible->cells) cells.push_back(objects_.tokenOf(cell));
  reader_->read(cells);
  // What is empty says nothing but the name of its place.
  std::erase_if(cells, [&](std::uint64_t cell) {
    const AtspiNodeRecord* known = reader_->knownRecord(cell);
    const bool isEmpty = known != nullptr && known->text && known->text->characterCount == 0;
    return isEmpty && !known->is(AtspiState::focused) && !known->is(AtspiState::selected);
  });
  sheets_.push_back({visible->rowCount, visible->columnCount});
  return cells;
}

std::vector<AccessibilityElement> AtspiSession::readChildren(std::uint64_t token, const AtspiNodeRecord& record,
                                                             std::vector<std::uint64_t> tokens) {
  const bool isOutline = record.role == AtspiRole::tree;
  const bool holdsLooseCells = isTable(record.role) || isOutline;
  std::vector<std::string> words = wordsBetweenChildren(record, reader_->toolkit());
  const std::size_t readCount = std::min(tokens.size(), readAheadCount);
  reader_->read(std::span(tokens).first(readCount));

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
    const AtspiNodeRecord* child = i < readCount ? reader_->knownRecord(tokens[i]) : nullptr;
    if (child != nullptr && child->error == AccessibilityErrorCode::success) {
      if (reader_->isHidden(*child)) {
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

AccessibilityResult<const std::vector<AccessibilityElement>*> AtspiSession::children(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  if (!(*found)->children) {
    const AtspiNodeRecord& record = reader_->record(element.token);
    // Copied, because reading more may move the records.
    std::vector<std::uint64_t> tokens = record.children;
    if (record.hasTooManyChildren && record.extents) tokens = readSheet(element.token, record);
    if (record.childrenError != AccessibilityErrorCode::success && tokens.empty()) {
      return std::unexpected(record.childrenError);
    }
    // Under a password field stand the pieces of its text.
    auto members = record.role == AtspiRole::passwordText
                       ? std::vector<AccessibilityElement>{}
                       : readChildren(element.token, reader_->record(element.token), std::move(tokens));
    (*view(element))->children = std::move(members);
  }
  return &*(*view(element))->children;
}

AccessibilityResult<AccessibilityValue> AtspiSession::applicationValue(std::string_view name) {
  const auto elementOrNothing = [](std::optional<std::uint64_t> token) -> AccessibilityResult<AccessibilityValue> {
    if (!token) return std::unexpected(AccessibilityErrorCode::noValue);
    return AccessibilityElement{*token};
  };
  if (name == "AXFocusedWindow") return elementOrNothing(application_->focusedWindow());
  if (name == "AXFocusedUIElement") return elementOrNothing(application_->focusedElement(readAheadCount));
  if (name == "AXMainWindow") {
    const auto& windows = application_->windows();
    return elementOrNothing(windows.empty() ? std::nullopt : std::optional(windows.front()));
  }
  std::vector<AccessibilityElement> windows;
  for (const std::uint64_t window : application_->windows()) windows.push_back({window});
  return windows;
}

AccessibilityResult<AccessibilityValue> AtspiSession::windowNumber(AccessibilityElement element) {
  if (!recognizedWindow_) {
    std::vector<AccessibilityWindowCandidate> candidates;
    const std::vector<std::uint64_t> windows = application_ ? application_->windows() : std::vector<std::uint64_t>{};
    for (const std::uint64_t window : windows) {
      auto& candidate = candidates.emplace_back();
      const auto found = view({window});
      if (!found) continue;
      candidate.frame = frameOf((*found)->mapped);
      const auto* title = (*found)->mapped.attribute("AXTitle");
      if (title != nullptr) candidate.title = std::get<std::string>(*title);
    }
    const auto index = recognizeByTitle(candidates, target_);
    recognizedWindow_ = index.transform([&](std::size_t i) { return AccessibilityElement{windows[i]}; });
  }
  if (*recognizedWindow_ != element) return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  return static_cast<std::int64_t>(target_.windowID);
}

AccessibilityResult<std::vector<std::string>> AtspiSession::attributeNames(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  std::vector<std::string> names;
  names.reserve((*found)->mapped.attributes.size() + 1);
  for (const auto& [name, value] : (*found)->mapped.attributes) names.push_back(name);
  names.emplace_back("AXChildren");
  return names;
}

AccessibilityResult<AccessibilityValue> AtspiSession::attributeValue(AccessibilityElement element,
                                                                     std::string_view name) {
  if (isApplication(element) &&
      (name == "AXFocusedWindow" || name == "AXMainWindow" || name == "AXWindows" || name == "AXFocusedUIElement")) {
    return applicationValue(name);
  }
  if (name == "AXWindowNumber") return windowNumber(element);
  if (name == "AXChildren") {
    const auto members = children(element);
    if (!members) return std::unexpected(members.error());
    return **members;
  }
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  const AccessibilityValue* value = (*found)->mapped.attribute(name);
  if (value == nullptr) return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  return *value;
}

AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> AtspiSession::multipleAttributeValues(
    AccessibilityElement element, std::span<const std::string_view> names) {
  std::vector<AccessibilityResult<AccessibilityValue>> values;
  values.reserve(names.size());
  for (const std::string_view name : names) values.push_back(attributeValue(element, name));
  return values;
}

AccessibilityResult<std::int64_t> AtspiSession::attributeValueCount(AccessibilityElement element,
                                                                    std::string_view name) {
  if (isApplication(element) && name == "AXWindows") return std::ssize(application_->windows());
  if (name != "AXChildren") return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  const auto members = children(element);
  if (!members) return std::unexpected(members.error());
  return std::ssize(**members);
}

AccessibilityResult<std::vector<AccessibilityValue>> AtspiSession::attributeValues(AccessibilityElement element,
                                                                                   std::string_view name,
                                                                                   std::int64_t index,
                                                                                   std::int64_t maximumCount) {
  if (isApplication(element) && name == "AXWindows") {
    const auto windows = std::get<std::vector<AccessibilityElement>>(*applicationValue(name));
    return elementPage(windows, index, maximumCount);
  }
  if (name != "AXChildren") return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
  const auto members = children(element);
  if (!members) return std::unexpected(members.error());
  return elementPage(**members, index, maximumCount);
}

AccessibilityResult<std::vector<std::string>> AtspiSession::parameterizedAttributeNames(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  return (*found)->mapped.fullText ? std::vector<std::string>{"AXStringForRange"} : std::vector<std::string>{};
}

AccessibilityResult<AccessibilityValue> AtspiSession::parameterizedAttributeValue(AccessibilityElement element,
                                                                                  std::string_view name,
                                                                                  const AccessibilityValue& parameter) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  const auto& text = (*found)->mapped.fullText;
  if (!text || name != "AXStringForRange") {
    return std::unexpected(AccessibilityErrorCode::parameterizedAttributeUnsupported);
  }
  const auto* range = std::get_if<ArtifactTextRange>(&parameter);
  if (range == nullptr || range->location < 0 || range->length < 0) {
    return std::unexpected(AccessibilityErrorCode::illegalArgument);
  }
  const Utf16Index index(*text);
  return std::string(index.substring(range->location, range->location + range->length));
}

AccessibilityResult<std::vector<std::string>> AtspiSession::actionNames(AccessibilityElement element) {
  const auto found = view(element);
  if (!found) return std::unexpected(found.error());
  return (*found)->mapped.actions;
}

void AtspiSession::willRead(std::span<const AccessibilityElement> upcoming) {
  if (!reader_ || upcoming.empty()) return;
  if (!hasReadWindow_) {
    hasReadWindow_ = true;
    if (application_) application_->prepareTree();
    reader_->readTree(upcoming.front().token, readAheadCount);
  }
  std::vector<std::uint64_t> tokens;
  for (const AccessibilityElement element : upcoming) {
    if (!isMadeRow(element) && !isMadeText(element)) tokens.push_back(element.token);
  }
  reader_->read(tokens);
}

std::vector<std::string> AtspiSession::captureWarnings() {
  std::vector<std::string> warnings;
  if (recognizedWindow_ && *recognizedWindow_) {
    warnings.emplace_back(
        "Several windows of the application stand in the frozen window's place; it was recognised by its title.");
  }
  if (application_ && !application_->isTreeBuilt()) {
    warnings.emplace_back("The application had not built the elements of its page yet; capture it once more.");
  }
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
