#include "QuilloCore/Clipboard/PasteboardError.h"

#include <utility>

namespace quillo {
namespace {

struct Describe {
  std::string operator()(const PasteboardError::DisplayUnavailable& /*unused*/) const {
    return "Quillo cannot reach the display, so it cannot use the clipboard.";
  }
  std::string operator()(const PasteboardError::DisplayLost& /*unused*/) const {
    return "The display went away while Quillo used the clipboard.";
  }
  std::string operator()(const PasteboardError::MissingExtension& e) const {
    return "The display does not offer the " + e.name + " extension, which Quillo needs for the clipboard.";
  }
};

}  // namespace

PasteboardError::PasteboardError(Case value) : value_(std::move(value)), description_(std::visit(Describe(), value_)) {}

std::optional<std::string> PasteboardError::recoverySuggestion() const {
  if (std::holds_alternative<DisplayUnavailable>(value_))
    return "Run Quillo inside a desktop session, where DISPLAY names the display.";
  return std::nullopt;
}

}  // namespace quillo
