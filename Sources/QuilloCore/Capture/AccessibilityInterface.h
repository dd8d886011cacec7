#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityErrorCode.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A handle to one element of another application's interface, valid within the session that gave it. Two handles are
/// equal exactly when they denote the same element.
struct AccessibilityElement {
  std::uint64_t token = 0;

  friend bool operator==(const AccessibilityElement&, const AccessibilityElement&) = default;
};

/// A value of a kind that captures do not keep (a date, a colour, a structure).
struct UnsupportedAccessibilityValue {
  friend bool operator==(const UnsupportedAccessibilityValue&, const UnsupportedAccessibilityValue&) = default;
};

/// What an application answers for an attribute. Texts are well-formed UTF-8; ranges count UTF-16 code units;
/// coordinates are screen points with the origin at the top left.
using AccessibilityValue = std::variant<std::string, bool, std::int64_t, double, ArtifactRect, ArtifactPoint,
                                        ArtifactSize, ArtifactTextRange, std::vector<std::string>, AccessibilityElement,
                                        std::vector<AccessibilityElement>, UnsupportedAccessibilityValue>;

template <class T>
using AccessibilityResult = std::expected<T, AccessibilityErrorCode>;

/// One reading of one application: the calls that the walk makes into the target process.
///
/// Used by one thread. Every call is bounded by the messaging time-out (then it answers `cannotComplete`) and, when the
/// session's control stops, returns soon with an error that nobody looks at, because the caller's next checkpoint
/// throws. An attribute that is absent answers `noValue` or `attributeUnsupported`.
class AccessibilitySession {
 public:
  virtual ~AccessibilitySession() = default;

  virtual AccessibilityResult<AccessibilityElement> applicationElement(std::int32_t processIdentifier) = 0;

  /// The process that the element belongs to. Asked anew at every call: `invalidUIElement` when the element, or with
  /// the application's element the process, has gone.
  virtual AccessibilityResult<std::int32_t> processIdentifier(AccessibilityElement element) = 0;

  /// Seconds that each later call may take.
  virtual void setMessagingTimeout(AccessibilityElement element, double seconds) = 0;

  virtual AccessibilityResult<std::vector<std::string>> attributeNames(AccessibilityElement element) = 0;

  /// The values of several attributes in one message, one result a name, in the order asked.
  virtual AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> multipleAttributeValues(
      AccessibilityElement element, std::span<const std::string_view> names) = 0;
  virtual AccessibilityResult<AccessibilityValue> attributeValue(AccessibilityElement element,
                                                                 std::string_view name) = 0;

  /// Number of members of an array attribute, and a page of them.
  virtual AccessibilityResult<std::int64_t> attributeValueCount(AccessibilityElement element,
                                                                std::string_view name) = 0;
  virtual AccessibilityResult<std::vector<AccessibilityValue>> attributeValues(AccessibilityElement element,
                                                                               std::string_view name,
                                                                               std::int64_t index,
                                                                               std::int64_t maximumCount) = 0;

  virtual AccessibilityResult<std::vector<std::string>> parameterizedAttributeNames(AccessibilityElement element) = 0;
  virtual AccessibilityResult<AccessibilityValue> parameterizedAttributeValue(AccessibilityElement element,
                                                                              std::string_view name,
                                                                              const AccessibilityValue& parameter) = 0;

  virtual AccessibilityResult<std::vector<std::string>> actionNames(AccessibilityElement element) = 0;

  /// A hint: these elements are read next, in this order. A session may fetch them together; the answers of the other
  /// calls are the same without it.
  virtual void willRead(std::span<const AccessibilityElement> upcoming) = 0;

  /// What the session wants to tell about the whole capture, in sentences for people (for example that the application
  /// exposes only its frame). Asked once, after the walk.
  virtual std::vector<std::string> captureWarnings() = 0;
};

enum class AccessibilityTrustPrompt : std::uint8_t {
  silent,
  askUser,  ///< also asks the system to grant access
};

/// The desktop's accessibility service.
class AccessibilityInterface {
 public:
  virtual ~AccessibilityInterface() = default;

  /// Whether this process may read other applications' interfaces.
  virtual bool isProcessTrusted(AccessibilityTrustPrompt prompt) = 0;

  /// Begins a reading of the target. The session looks at the control between any two replies. `target` tells where the
  /// frozen window stands, for applications that do not know it themselves. Never null.
  virtual std::unique_ptr<AccessibilitySession> makeSession(
      const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) = 0;
};

}  // namespace quillo
