#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloLinux/Accessibility/AtspiAttributeMapping.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiNodeReader.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"
#include "QuilloLinux/Accessibility/AtspiWindowPlacement.h"

namespace quillo {

/// The elements as the walk sees them: those of the bus without what is hidden, and between them rows and words that
/// the toolkit has no objects for. Refers to what it was made with.
class AtspiElements {
 public:
  /// More elements than any capture keeps are not read ahead.
  static constexpr std::size_t readAheadCount = 10'000;

  AtspiElements(AtspiBus& bus, AtspiObjectTable& objects, AtspiNodeReader& reader, const WindowCaptureTarget& target,
                const AccessibilityCaptureControl& control)
      : bus_(bus), objects_(objects), reader_(reader), target_(target), control_(control) {}

  /// Whether no object of the bus stands behind the element.
  static bool isMadeUp(AccessibilityElement element);

  AccessibilityResult<const AtspiMappedElement*> element(AccessibilityElement element);
  AccessibilityResult<const std::vector<AccessibilityElement>*> children(AccessibilityElement element);

  /// What was left out.
  std::vector<std::string> warnings() const;

 private:
  /// A row that the toolkit does not give; its cells' frames make its own.
  struct MadeRow {
    std::vector<std::uint64_t> cells;
    bool isOutlineRow = false;
  };
  /// A sheet of which only the part on the screen was read.
  struct Sheet {
    std::int32_t rowCount = 0;
    std::int32_t columnCount = 0;
  };
  /// Words between children, which the toolkit gives as its parent's text only; they stand where the parent stands.
  struct MadeText {
    std::uint64_t parent = 0;
    std::string words;
  };
  /// One element as the walk sees it, made when it is first asked for.
  struct View {
    AtspiMappedElement mapped;
    std::optional<std::vector<AccessibilityElement>> children;
  };

  AccessibilityResult<View*> view(AccessibilityElement element);
  AccessibilityResult<View*> viewOfRow(AccessibilityElement element);
  AccessibilityResult<View*> viewOfText(AccessibilityElement element);
  std::vector<AccessibilityElement> readChildren(std::uint64_t token, const AtspiNodeRecord& record,
                                                 std::vector<std::uint64_t> tokens);
  std::vector<std::uint64_t> readSheet(std::uint64_t token, const AtspiNodeRecord& record);
  std::vector<AccessibilityElement> rowsOf(std::span<const std::uint64_t> cells, bool areOutlineRows);
  std::optional<AccessibilityElement> makeText(std::uint64_t parent, std::string words);
  AtspiWindowPlacement placementOf(const AtspiNodeRecord& record);

  AtspiBus& bus_;
  AtspiObjectTable& objects_;
  AtspiNodeReader& reader_;
  const WindowCaptureTarget& target_;
  const AccessibilityCaptureControl& control_;
  std::unordered_map<std::uint64_t, View> views_;
  std::vector<Sheet> sheets_;
  std::vector<MadeRow> madeRows_;
  std::vector<MadeText> madeTexts_;
  std::int64_t unreadHiddenCount_ = 0;
  std::optional<ArtifactPoint> windowOrigin_;  // where the toolkit counts in its window, once the window was seen
};

}  // namespace quillo
