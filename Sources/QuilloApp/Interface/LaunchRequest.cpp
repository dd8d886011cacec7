#include "QuilloApp/Interface/LaunchRequest.h"

#include <array>
#include <utility>

namespace quillo {
namespace {

constexpr std::array<std::pair<LaunchRequest, std::string_view>, 4> names = {{
    {LaunchRequest::open, "open"},
    {LaunchRequest::background, "background"},
    {LaunchRequest::capture, "capture"},
    {LaunchRequest::paste, "paste"},
}};

}  // namespace

std::string_view launchRequestName(LaunchRequest request) {
  for (const auto& [value, name] : names) {
    if (value == request) return name;
  }
  return {};
}

std::optional<LaunchRequest> launchRequest(std::string_view name) {
  for (const auto& [value, text] : names) {
    if (text == name) return value;
  }
  return std::nullopt;
}

}  // namespace quillo
