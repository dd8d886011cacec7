#pragma once

#include <cstdint>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo::test {

/// A valid snapshot that depends only on the seed: a random tree of up to `maximumNodeCount` nodes with references
/// across it, attributes of every type with extreme numbers and difficult texts, truncations, issues and warnings.
AccessibilitySnapshot generateSnapshot(std::uint64_t seed, std::int64_t maximumNodeCount = 12);

}  // namespace quillo::test
