#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilityTextReader.h"

namespace quillo {

/// Reads documents whose text is addressed by opaque markers instead of numbers. A marker travels as an element's
/// handle, a range of markers as the list of its two ends.
class AccessibilityTextMarkerReader {
 public:
  /// Both arguments outlive this.
  AccessibilityTextMarkerReader(AccessibilitySession& session, AccessibilityTextReader& textReader)
      : session_(session), textReader_(textReader) {}

  /// Whether the document has markers at both ends, and texts and lengths between markers.
  bool isSupported(AccessibilityElement element, const AdvertisedAttributeNames& advertised, std::int64_t nodeID);

  /// The document's text from its start, as much as the limits allow, a cut recorded. Nothing when it came back
  /// incomplete, could not be read, or could not be bounded, which is recorded.
  std::optional<std::string> copyText(AccessibilityElement element, std::int64_t nodeID);

 private:
  using Markers = std::vector<AccessibilityElement>;

  template <class T>
  AccessibilityResult<T> parameterized(AccessibilityElement element, std::string_view name,
                                       const AccessibilityValue& parameter);
  AccessibilityResult<Markers> wholeRange(AccessibilityElement element);
  std::optional<Markers> boundedRange(AccessibilityElement element, AccessibilityElement start, std::int64_t units);

  AccessibilitySession& session_;
  AccessibilityTextReader& textReader_;
  std::vector<std::string> offered_;  // by the document that isSupported was last asked about
};

}  // namespace quillo
