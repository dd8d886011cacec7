// The observation as JSON: round trips, which members are required, and what is written for empty ones.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Support/JsonError.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "QuilloCore/Support/RecordHash.h"
#include "Tests/Support/JsonCorruption.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

InterfaceObservation makeObservation() {
  AccessibilitySnapshot snapshot = makeSnapshot(
      "window 'Inbox' frame=0,0,400,300\n"
      "  textArea 'Body' [focused] text='all \\'of\\' it\\n/' value=part AXSelectedTextRange=1..3 placeholder=p "
      "help=h\n"
      "  link 'Site' AXURL=http://a.example/ AXDOMClassList='a|b' actions=AXPress AXVisited=true frame=9,9,0,0\n"
      "  checkBox 'Done' value=2 AXDOMIdentifier=done AXAccessKey=d\n"
      "  text value=0.1 AXHidden=true description=d\n"
      "  textField [protected]\n"
      "  table\n"
      "    row [selected]\n"
      "      cell 'One'\n"
      "      cell '2'\n");
  snapshot.truncations = {{AccessibilityTruncationReason::depthLimit, std::nullopt, std::nullopt, std::nullopt}};
  snapshot.warnings = {"note"};
  snapshot.deriveFields();
  return AccessibilitySemanticNormalizer::normalize(snapshot, {});
}

/// The JSON without the first member of that key; its value is a string, a number or an empty object or list.
std::string without(const std::string& json, const std::string& key) {
  std::string result = json;
  std::size_t begin = result.find('"' + key + "\":");
  EXPECT_NE(begin, std::string::npos) << key;
  std::size_t end = begin + key.size() + 3;
  int depth = 0;
  for (; depth > 0 || (result[end] != ',' && result[end] != '}'); ++end) {
    if (result[end] == '[' || result[end] == '{') ++depth;
    if (result[end] == ']' || result[end] == '}') --depth;
  }
  if (result[end] == ',') {
    ++end;
  } else if (result[begin - 1] == ',') {
    --begin;
  }
  return result.erase(begin, end - begin);
}

TEST(ObservationJson, roundTripsInBothStyles) {
  const InterfaceObservation observation = makeObservation();
  for (const JsonStyle style : {JsonStyle::compact, JsonStyle::prettyPrinted}) {
    const std::string json = encodeJson(observation, style);
    const auto decoded = decodeJson<InterfaceObservation>(json);
    EXPECT_EQ(describe(decoded), describe(observation));
    EXPECT_EQ(decoded, observation);
    EXPECT_EQ(encodeJson(decoded, style), json);
  }
}

TEST(ObservationJson, everyDamagedFieldIsRefusedOrTellsItselfApart) {
  const InterfaceObservation observation = makeObservation();
  const RecordHash hash;
  int readCount = 0;
  for (const CorruptedJson& corrupted : singleFieldCorruptions(encodeJson(observation, JsonStyle::compact))) {
    try {
      const auto decoded = decodeJson<InterfaceObservation>(corrupted.text);
      EXPECT_EQ(decoded == observation, hash(decoded) == hash(observation)) << corrupted.label;
      ++readCount;
    } catch (const JsonError& error) {
      EXPECT_NE(error.errorDescription(), "");
    }
  }
  EXPECT_GT(readCount, 50);
  EXPECT_EQ(hash(observation), hash(InterfaceObservation(observation)));
}

TEST(ObservationJson, keysAreSortedAndEmptyMembersLeftOut) {
  InterfaceObservation observation;
  observation.observedAt = Date(std::chrono::milliseconds(1'790'000'000'750));
  observation.rootElementID = "application-root";
  observation.elements.push_back({});
  observation.elements.front().id = "application-root";
  observation.elements.front().role = InterfaceSemanticRole::application;
  observation.elements.front().accessibilityRole = "a/b";
  EXPECT_EQ(encodeJson(observation, JsonStyle::compact),
            R"({"completeness":{"ignoredGraphReferenceCount":0,"prunedNodeCount":0,"retainedElementCount":0,)"
            R"("sourceIssues":[],"sourceNodeCount":0,"sourceTruncations":[],"warnings":[],"wasSourceTruncated":false},)"
            R"("elements":[{"accessibilityRole":"a/b","actions":[],"childIDs":[],"depth":0,"id":"application-root",)"
            R"("identifiers":[],"isProtected":false,"properties":{"domClasses":[]},"role":"application","state":{},)"
            R"("visibility":"unknown"}],"observedAt":"2026-09-21T14:13:20Z","rootElementID":"application-root",)"
            R"("schemaVersion":4,"sourceRootKind":"focusedWindow","targetProcessIdentifier":0})");
}

TEST(ObservationJson, requiredMembersAreRequired) {
  const std::string json = encodeJson(makeObservation(), JsonStyle::compact);
  for (const std::string key : {"schemaVersion",
                                "observedAt",
                                "targetProcessIdentifier",
                                "sourceRootKind",
                                "rootElementID",
                                "elements",
                                "completeness",
                                "sourceNodeCount",
                                "prunedNodeCount",
                                "ignoredGraphReferenceCount",
                                "warnings",
                                "sourceIssues",
                                "wasSourceTruncated",
                                "id",
                                "childIDs",
                                "depth",
                                "role",
                                "accessibilityRole",
                                "state",
                                "actions",
                                "visibility",
                                "identifiers",
                                "properties",
                                "domClasses",
                                "isProtected",
                                "kind",
                                "source"}) {
    EXPECT_THROW(decodeJson<InterfaceObservation>(without(json, key)), JsonError) << key;
  }
  for (const std::string key : {"sharedGraphReferenceCount", "cyclicGraphReferenceCount", "sourceNodeID", "parentID",
                                "label", "value", "content", "placeholder", "bounds", "focused", "rowValues"}) {
    EXPECT_NO_THROW(decodeJson<InterfaceObservation>(without(json, key))) << key;
  }
}

TEST(ObservationJson, unknownNamesAreRefused) {
  const std::string json = encodeJson(makeObservation(), JsonStyle::compact);
  const auto replaced = [&](std::string_view from, std::string_view to) {
    std::string text = json;
    const std::size_t position = text.find(from);
    EXPECT_NE(position, std::string::npos) << from;
    return text.replace(position, from.size(), to);
  };
  for (const auto& [from, to] : {std::pair{R"("role":"link")", R"("role":"Link")"},
                                 {R"("visibility":"hidden")", R"("visibility":"gone")"},
                                 {R"("checked":"mixed")", R"("checked":"2")"},
                                 {R"("kind":"dom")", R"("kind":"DOM")"},
                                 {R"("depth":1)", R"("depth":"1")"},
                                 {R"("label":"Body")", R"("label":null)"}}) {
    EXPECT_THROW(decodeJson<InterfaceObservation>(replaced(from, to)), JsonError) << from;
  }
}

}  // namespace
}  // namespace quillo::test
