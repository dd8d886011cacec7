#include "QuilloCore/Capture/AccessibilityCaptureState.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Support/GraphemeClusters.h"

namespace quillo {

std::optional<std::string> AccessibilityCaptureState::store(std::string text, std::optional<std::int64_t> nodeID,
                                                            std::string_view attribute) {
  checkpoint();
  if (text.empty()) return std::nullopt;
  std::int64_t count = countGraphemeClusters(text);

  const auto cut = [&](AccessibilityTruncationReason reason, std::int64_t kept) {
    addTruncation({reason, nodeID, std::string(attribute), count - kept});
    text.resize(graphemeClusterPrefix(text, kept).size());
    count = kept;
  };
  const std::int64_t attributeLimit = configuration_.maximumCharactersPerAttribute;
  if (count > attributeLimit) cut(AccessibilityTruncationReason::attributeValueLimit, attributeLimit);
  const std::int64_t budget = std::max<std::int64_t>(remainingCharacterCount(), 0);
  if (count > budget) cut(AccessibilityTruncationReason::characterLimit, budget);

  characterCount_ += count;
  checkpoint();
  if (text.empty()) return std::nullopt;
  return text;
}

void AccessibilityCaptureState::addTruncation(AccessibilityTruncation truncation) {
  if (knownTruncations_.insert(truncation).second) truncations_.push_back(std::move(truncation));
}

void AccessibilityCaptureState::addIssue(AccessibilityCaptureIssue issue) {
  const bool concernsStructure =
      (issue.attribute && AccessibilityCapturePolicy::isStructuralAttribute(*issue.attribute)) ||
      issue.message == AccessibilityIssueMessages::couldNotListAttributes;
  if (concernsStructure && issue.nodeID) noteUnverifiedNode(*issue.nodeID);

  if (std::cmp_less(issues_.size(), configuration_.maximumIssueCount)) {
    issues_.push_back(std::move(issue));
  } else {
    ++droppedIssueCount_;
  }
}

void AccessibilityCaptureState::addWarning(AccessibilityErrorCode code, std::string_view message,
                                           std::optional<std::int64_t> nodeID,
                                           std::optional<std::string_view> attribute) {
  addIssue({AccessibilityIssueSeverity::warning, errorCodeName(code), std::string(message), nodeID,
            attribute.transform([](std::string_view name) { return std::string(name); })});
}

void AccessibilityCaptureState::replaceIncompleteTextReadIssues(std::size_t addedSince, std::int64_t nodeID,
                                                                std::string_view sourceAttribute,
                                                                std::string_view retainedFallback) {
  for (std::size_t i = addedSince; i < issues_.size(); ++i) {
    if (issues_[i].nodeID != nodeID || issues_[i].code != incompleteTextReadCode) continue;
    // The text is there after all, if from another source.
    issues_[i].severity = AccessibilityIssueSeverity::information;
    issues_[i].code = "AXTextFallbackRetained";
    issues_[i].message = fmt::format(
        "{} returned incomplete text; its partial result was discarded and {} was retained as the fallback text.",
        sourceAttribute, retainedFallback);
    issues_[i].attribute = std::string(sourceAttribute);
  }
}

bool meansAbsence(AccessibilityErrorCode code) {
  switch (code) {
    case AccessibilityErrorCode::noValue:
    case AccessibilityErrorCode::attributeUnsupported:
    case AccessibilityErrorCode::actionUnsupported:
    case AccessibilityErrorCode::parameterizedAttributeUnsupported: return true;
    default: return false;
  }
}

}  // namespace quillo
