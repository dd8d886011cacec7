#pragma once

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {

struct NormalizationCase {
  std::string_view label;
  std::string_view notation;  // the first line is the source root
  std::string_view expected;
};

inline void expectNormalized(const std::vector<NormalizationCase>& cases, bool inferConservativeActions) {
  for (const NormalizationCase& one : cases) {
    const auto observation = AccessibilitySemanticNormalizer::normalize(
        makeSnapshot(one.notation),
        {.synthesizeApplicationRoot = false, .inferConservativeActions = inferConservativeActions});
    EXPECT_EQ(describe(observation), one.expected) << one.label;
    EXPECT_EQ(findViolation(observation), "") << one.label;
  }
}

}  // namespace quillo::test
