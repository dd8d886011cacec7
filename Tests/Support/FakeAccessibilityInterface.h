#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "Tests/Support/TreeNotation.h"

namespace quillo::test {

/// One element of a fake application. Everything may be changed at any time, also while it is read.
struct FakeElement {
  std::map<std::string, AccessibilityValue, std::less<>> attributes;  ///< advertised and answered
  std::map<std::string, AccessibilityErrorCode, std::less<>> errors;  ///< answered instead of a value, and advertised
  std::map<std::string, std::int64_t, std::less<>> claimedCounts;     ///< lies about the size of an array
  bool ignoresPageEnds = false;  ///< a page brings everything from its beginning on
  std::vector<std::string> actions;
  std::vector<std::string> parameterized;         ///< further names that it claims
  std::optional<std::string> text;                ///< answers AXStringForRange, or the markers that it claims
  std::optional<std::int64_t> longestTextAnswer;  ///< UTF-16 units after which it stops answering
  bool completesPairs = false;                    ///< a range that ends inside a surrogate pair takes it whole
  std::int64_t markerError = 0;                   ///< added to the index of each marker that it makes
};

/// One call that was made, in the order made.
struct FakeCall {
  std::string operation;  ///< the session's function
  AccessibilityElement element;
  std::string name;  ///< the attribute; several are separated by commas
  std::int64_t index = 0;
  std::int64_t count = 0;  ///< of a page or a range; milliseconds of a time-out

  friend bool operator==(const FakeCall&, const FakeCall&) = default;
};

/// A desktop with one application that lives in memory. Trees come from the notation of tests:
///
///     window 'Inbox' number=7 frame=0,0,400,300
///       button 'Reply' [focused] actions=AXPress,AXShowMenu
///       AXTextArea text='Dear all' value='Dear'
///
/// A kind in small letters stands for the role "AX" with a capital letter (`text` is AXStaticText); the flags are
/// focused, disabled, selected, protected and secure (a password field); the keys subrole, value, help, description,
/// label, placeholder, id, frame, number, text and actions name what they say, any other key must be an attribute's
/// name.
class FakeAccessibilityInterface final : public AccessibilityInterface {
 public:
  static constexpr std::int32_t processIdentifier = 400;

  FakeAccessibilityInterface();

  AccessibilityElement application() const { return {1}; }
  AccessibilityElement add(FakeElement element = {});
  FakeElement& operator[](AccessibilityElement element);

  /// Adds the windows of the notation to the application and gives the elements in the order of the lines. The first
  /// window becomes the focused one.
  std::vector<AccessibilityElement> addWindows(std::string_view notation);
  /// Gives the element a text that is addressed by markers.
  void setMarkedText(AccessibilityElement element, std::string text, std::vector<std::string> offered);
  void setChildren(AccessibilityElement parent, std::vector<AccessibilityElement> children,
                   std::string_view attribute = "AXChildren");

  /// Called before each call is answered; may move the clock, change elements, or answer an error instead.
  std::function<std::optional<AccessibilityErrorCode>(const FakeCall&)> onCall;

  bool isTrusted = true;
  std::int32_t answeredProcessIdentifier = processIdentifier;
  std::vector<std::string> warnings;
  std::uint64_t uptimeNanoseconds = 0;  ///< the fake clock
  UptimeProvider uptime() {
    return [this] { return uptimeNanoseconds; };
  }

  std::vector<FakeCall> calls;
  bool recordsCalls = true;  ///< off where only time counts

  bool isProcessTrusted(AccessibilityTrustPrompt prompt) override;
  std::unique_ptr<AccessibilitySession> makeSession(
      const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) override;

 private:
  class Session;

  AccessibilityElement addTree(const NotationNode& node, std::vector<AccessibilityElement>& added);

  std::vector<FakeElement> elements_;  // the element of token n stands at n - 1
};

}  // namespace quillo::test
