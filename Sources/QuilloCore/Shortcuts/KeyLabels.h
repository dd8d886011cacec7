#pragma once

#include <cstdint>
#include <string_view>

namespace quillo {

/// What people call a key; empty for keys that are called by what they type.
std::string_view keyLabel(std::uint32_t keyCode);

}  // namespace quillo
