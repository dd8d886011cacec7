#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"

#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiFocusSearch.h"
#include "QuilloLinux/Accessibility/AtspiRoles.h"

namespace quillo {
namespace {

/// A search is many calls; all of them together get somewhat more time than one.
constexpr double searchFactor = 1.5;

// Neither names nor paths of the bus hold blanks.
constexpr char separator = ' ';

std::string identityOf(const AtspiObject& object) {
  return object.busName + separator + object.path;
}

AtspiObject objectOf(const std::string& identity) {
  const std::size_t end = identity.find(separator);
  if (end == std::string::npos) return {};
  return {identity.substr(0, end), identity.substr(end + 1)};
}

}  // namespace

bool AtspiFocusedElement::isAllowed(AccessibilityTrustPrompt prompt) {
  AtspiStatus status = sessionBus_.readStatus();
  if (status.availability == AtspiAvailability::switchedOff && prompt == AccessibilityTrustPrompt::askUser &&
      sessionBus_.enable()) {
    status = sessionBus_.readStatus();
  }
  if (status.availability != AtspiAvailability::available) return false;
  if (busAddress_ != status.busAddress) {
    busAddress_ = std::move(status.busAddress);
    bus_.reset();
  }
  return true;
}

std::expected<FocusedElement, FocusedElementAbsence> AtspiFocusedElement::focusedElement(std::int32_t processIdentifier,
                                                                                         double messagingTimeout) {
  if (busAddress_.empty()) return std::unexpected(FocusedElementAbsence::notExposed);
  // Anew for every search, so that a connection that was lost is no matter.
  bus_ = AtspiBus::connect(busAddress_);
  if (!bus_) return std::unexpected(FocusedElementAbsence::notExposed);
  bus_->setTimeout(messagingTimeout);
  const AccessibilityCaptureControl control(messagingTimeout * searchFactor);
  const auto found = AtspiFocusSearch(*bus_, control).find(processIdentifier);
  if (!found) return std::unexpected(found.error());
  return FocusedElement{.identity = identityOf(found->object), .isTerminal = found->role == AtspiRole::terminal};
}

bool AtspiFocusedElement::isFocused(const std::string& identity, double messagingTimeout) {
  const AtspiObject object = objectOf(identity);
  if (object.isNull() || !bus_) return false;
  bus_->setTimeout(messagingTimeout);
  const AccessibilityCaptureControl control(messagingTimeout);
  bool isFocused = false;
  bus_->call(
      {object,
       "org.a11y.atspi.Accessible",
       "GetState",
       {},
       [&](const AtspiReply& reply) { isFocused = (reply.states().value_or(0) >> AtspiState::focused & 1U) != 0; }},
      control);
  return isFocused;
}

}  // namespace quillo
