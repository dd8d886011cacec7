// What holds for the observation of every snapshot, whatever graph and attributes it has.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "Tests/Support/GeneratedInterface.h"
#include "Tests/Support/ObservationText.h"

namespace quillo::test {
namespace {

/// What an observation shows of the rules, so that one can see that the snapshots reach all of them.
void countTraits(const InterfaceObservation& observation, std::map<std::string, int>& traits) {
  const auto any = [&](auto holds) { return std::ranges::any_of(observation.elements, holds) ? 1 : 0; };
  const InterfaceObservationCompleteness& counts = observation.completeness;
  traits["cycle"] += counts.cyclicGraphReferenceCount > 0 ? 1 : 0;
  traits["shared"] += counts.sharedGraphReferenceCount > 0 ? 1 : 0;
  traits["unavailable"] += counts.unavailableGraphReferenceCount > 0 ? 1 : 0;
  traits["pruned"] += counts.prunedNodeCount > 0 ? 1 : 0;
  traits["row"] += any([](const auto& element) { return element.properties->rowValues.has_value(); });
  traits["headers"] += any([](const auto& element) { return element.properties->columnHeaders.has_value(); });
  traits["content"] += any([](const auto& element) { return element.content.has_value(); });
  traits["protected"] += any([](const auto& element) { return element.isProtected; });
  traits["focused"] += any([](const auto& element) { return element.state.focused.value_or(false); });
  traits["deep"] += any([](const auto& element) { return element.depth > 12; });
}

TEST(NormalizerProperties, holdForEveryGeneratedInterface) {
  std::mt19937 random(11);  // NOLINT(bugprone-random-generator-seed): the same snapshots in every run
  std::map<std::string, int> traits;
  constexpr int rounds = 4000;
  for (int round = 0; round < rounds; ++round) {
    std::vector<std::uint8_t> input(100 + random() % 1500U);
    std::ranges::generate(input, random);
    FuzzedDataProvider bytes(input.data(), input.size());
    const AccessibilitySnapshot snapshot = generateInterface(bytes);
    const auto observation = AccessibilitySemanticNormalizer::normalize(
        snapshot, {.synthesizeApplicationRoot = round % 2 == 0, .inferConservativeActions = round % 4 < 2});
    ASSERT_EQ(findViolation(observation, snapshot), "") << encodeJson(snapshot, JsonStyle::prettyPrinted);
    const std::string json = encodeJson(observation, JsonStyle::compact);
    ASSERT_EQ(decodeJson<InterfaceObservation>(json), observation) << json;
    countTraits(observation, traits);
  }
  for (const auto& [trait, count] : traits) EXPECT_GT(count, rounds / 50) << trait;
}

}  // namespace
}  // namespace quillo::test
