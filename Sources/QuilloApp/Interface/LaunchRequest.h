#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillo {

/// What a start of the application asks for.
enum class LaunchRequest : std::uint8_t { open, background, capture, paste };

std::string_view launchRequestName(LaunchRequest request);
std::optional<LaunchRequest> launchRequest(std::string_view name);

}  // namespace quillo
