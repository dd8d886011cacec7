#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloLinux/Accessibility/AtspiBulkCache.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiNodeReader.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// One application on the accessibility bus: where it is, which toolkit it speaks through, its windows and its focus.
class AtspiApplication {
 public:
  /// `roots`: one for each connection that the process has, at least one. Reads the windows.
  AtspiApplication(AtspiBus& bus, AtspiObjectTable& objects, AtspiNodeReader& reader,
                   const AccessibilityCaptureControl& control, std::span<const AtspiObject> roots);

  std::uint64_t token() const { return roots_.front(); }

  /// The top-level windows, read.
  const std::vector<std::uint64_t>& windows() const { return windows_; }

  std::optional<std::uint64_t> focusedWindow() const;

  /// To be called before more than the windows is read. Where a toolkit builds its tree only on demand, waits once
  /// until it has done so: at most 1.5 seconds, or 3 when its page has no element at all until then. Then what its
  /// cache holds is fetched in one call.
  void prepareTree();

  /// False when `prepareTree` waited in vain for the first element of a page, and none has come since.
  bool isTreeBuilt() const { return isTreeBuilt_ || hasPageWithElements(); }

  /// The element that has the focus inside the focused window. Reads the whole window where the toolkit cannot be
  /// asked.
  std::optional<std::uint64_t> focusedElement(std::size_t maximumCount);

 private:
  void identifyToolkit();
  void readWindows();
  /// Whether one of these has not answered in time.
  bool isSilent(std::span<const std::uint64_t> tokens) const;
  void awaitTree();
  void fetchBulk();
  std::size_t sampleTree();
  bool hasPageWithElements() const;
  std::optional<std::vector<std::uint64_t>> matchFocused(std::uint64_t window);
  std::optional<std::uint64_t> bestFocused(const std::vector<std::uint64_t>& candidates);

  AtspiBus& bus_;
  AtspiObjectTable& objects_;
  AtspiNodeReader& reader_;
  const AccessibilityCaptureControl& control_;
  std::vector<std::uint64_t> roots_;
  std::vector<std::uint64_t> windows_;
  std::vector<std::uint64_t> documents_;  // the pages seen while waiting for the tree
  std::optional<AtspiEventListening> listening_;
  std::size_t sampledChildCount_ = 0;  // of the upper elements, when they were looked at last
  bool isTreePrepared_ = false;
  bool isTreeBuilt_ = true;
};

}  // namespace quillo
