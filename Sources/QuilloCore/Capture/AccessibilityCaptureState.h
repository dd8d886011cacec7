#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityErrorCode.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Support/RecordHash.h"

namespace quillo {

/// What one capture has retained, cut and met so far. Used by the thread that walks.
class AccessibilityCaptureState {
 public:
  /// Both arguments outlive the state.
  AccessibilityCaptureState(const AccessibilityCaptureConfiguration& configuration,
                            const AccessibilityCaptureControl& control)
      : configuration_(configuration), control_(control) {}

  const AccessibilityCaptureConfiguration& configuration() const { return configuration_; }
  const AccessibilityCaptureControl& control() const { return control_; }
  void checkpoint() const { control_.checkpoint(); }

  std::int64_t characterCount() const { return characterCount_; }
  std::int64_t remainingCharacterCount() const { return configuration_.maximumCharacterCount - characterCount_; }

  /// Takes a text into the capture, cut to what the limits leave, every cut recorded; nothing when nothing is left.
  std::optional<std::string> store(std::string text, std::optional<std::int64_t> nodeID, std::string_view attribute);

  /// A truncation equal to one already recorded is not recorded again.
  void addTruncation(AccessibilityTruncation truncation);

  /// Beyond the configuration's count issues are only counted.
  void addIssue(AccessibilityCaptureIssue issue);
  void addWarning(AccessibilityErrorCode code, std::string_view message, std::optional<std::int64_t> nodeID,
                  std::optional<std::string_view> attribute);

  /// The text of this node was replaced by another source: says so in the place of the incomplete readings among the
  /// issues from `addedSince` on.
  void replaceIncompleteTextReadIssues(std::size_t addedSince, std::int64_t nodeID, std::string_view sourceAttribute,
                                       std::string_view retainedFallback);

  const std::vector<AccessibilityTruncation>& truncations() const { return truncations_; }
  const std::vector<AccessibilityCaptureIssue>& issues() const { return issues_; }
  std::int64_t droppedIssueCount() const { return droppedIssueCount_; }

  /// Nodes whose members, or whose protection, could not be read; also those whose issue was only counted. A node can
  /// be named several times.
  const std::vector<std::int64_t>& unverifiedNodeIDs() const { return unverifiedNodeIDs_; }
  void noteUnverifiedNode(std::int64_t nodeID) { unverifiedNodeIDs_.push_back(nodeID); }

 private:
  const AccessibilityCaptureConfiguration& configuration_;
  const AccessibilityCaptureControl& control_;
  std::int64_t characterCount_ = 0;
  std::vector<AccessibilityTruncation> truncations_;
  std::unordered_set<AccessibilityTruncation, RecordHash> knownTruncations_;
  std::vector<AccessibilityCaptureIssue> issues_;
  std::int64_t droppedIssueCount_ = 0;
  std::vector<std::int64_t> unverifiedNodeIDs_;
};

/// The messages of issues that are also looked for.
namespace AccessibilityIssueMessages {
inline constexpr std::string_view couldNotListAttributes = "Could not list attributes.";
inline constexpr std::string_view couldNotReadAttribute = "Could not read attribute.";
}  // namespace AccessibilityIssueMessages

/// Issue code of a text that came back shorter or longer than asked for.
inline constexpr std::string_view incompleteTextReadCode = "AXIncompleteTextRead";

/// Whether the error only says that the element has no such thing, which is no trouble.
bool meansAbsence(AccessibilityErrorCode code);

}  // namespace quillo
