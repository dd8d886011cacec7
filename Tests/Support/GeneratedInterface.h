#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo::test {

/// A snapshot made of any bytes, for fuzzers and for tests over many: small and shaped like an interface, with tables,
/// outlines, documents in documents and protected fields, and with everything that a file may hold and no capture does:
/// references back, across and to nothing, ids that repeat or leave gaps, nodes in disorder, a root that is missing.
AccessibilitySnapshot generateInterface(FuzzedDataProvider& bytes);

}  // namespace quillo::test
