#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "Tests/Support/GeneratedSnapshot.h"
#include "Tests/Support/JsonCorruption.h"

namespace quillo::test {
namespace {

namespace codec = CanonicalAccessibilityEvidenceCodec;
using Error = CanonicalAccessibilityEvidenceCodecError;
using Evidence = CanonicalAccessibilityEvidence;

/// "b" in two attributes and "a" as a warning, on two nodes.
AccessibilitySnapshot smallSnapshot() {
  AccessibilitySnapshot snapshot;
  snapshot.capturedAt = *parseDate("2026-11-14T21:35:47.5Z");
  snapshot.targetProcessIdentifier = 42;
  AccessibilityNode window;
  window.childIDs = {1};
  window.role = "AXWindow";
  window.attributes = {{"AXTitle", std::string("b")}};
  AccessibilityNode button;
  button.id = 1;
  button.parentID = 0;
  button.depth = 1;
  button.role = "AXButton";
  button.frame = ArtifactRect{1, 2.5, 3, 4};
  button.attributes = {{"AXTitle", std::string("b")}, {"AXValue", std::int64_t{7}}};
  snapshot.nodes = {window, button};
  snapshot.characterCount = 3;
  snapshot.warnings = {"a"};
  snapshot.deriveFields();
  return snapshot;
}

AccessibilityCaptureIssue issueSaying(std::string message) {
  AccessibilityCaptureIssue issue;
  issue.code = "failure";
  issue.message = std::move(message);
  return issue;
}

/// The codec's error of decoding the evidence as a snapshot, the file having been written without validation.
Error errorOfDecoding(const Evidence& evidence) {
  try {
    codec::decodeSnapshot(encodeJson(evidence, JsonStyle::compact));
  } catch (const Error& error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return Error(Error::MissingTextBlob{-1});
}

TEST(CanonicalAccessibilityEvidenceCodec, internsEachTextOnceInTheOrderOfItsBytes) {
  const std::string_view digestOfA = "ca978112ca1bbdcafac231b39a23dc4da786eff8147c4e72b9807785afee48bb";
  const std::string_view digestOfB = "3e23e8160039594a33894f6564e1b1348bbd7a0088d42c4acb73eeaed59c009d";
  const std::string expected =
      std::string(R"({"capturedAt":816384947.5,)") +
      R"("coverage":{"characterCount":3,"isComplete":true,"issues":[],"nodeCount":2,"truncations":[],)"
      R"("warningTextBlobIDs":[0],"wasTruncated":false},)"
      R"("nodes":[{"attributes":[{"name":"AXTitle","value":{"textBlobID":1,"type":"text"}}],"depth":0,"id":0,)"
      R"("isProtected":false,"relations":[{"kind":"children","targetNodeIDs":[1]}],"role":"AXWindow"},)"
      R"({"attributes":[{"name":"AXTitle","value":{"textBlobID":1,"type":"text"}},)"
      R"({"name":"AXValue","value":{"type":"integer","value":7}}],"depth":1,)"
      R"("frame":{"height":4,"width":3,"x":1,"y":2.5},"id":1,"isProtected":false,"parentNodeID":0,)"
      R"("relations":[{"kind":"children","targetNodeIDs":[]}],"role":"AXButton"}],)"
      R"("rootKind":"focusedWindow","rootNodeID":0,"schemaVersion":3,"sourceSnapshotSchemaVersion":2,)"
      R"("targetProcessIdentifier":42,)"
      R"("textBlobs":[{"id":0,"sha256":")" +
      std::string(digestOfA) + R"(","text":"a","utf16Length":1,"utf8ByteCount":1},{"id":1,"sha256":")" +
      std::string(digestOfB) + R"(","text":"b","utf16Length":1,"utf8ByteCount":1}]})";
  EXPECT_EQ(expected, codec::encodeSnapshot(smallSnapshot()));
}

TEST(CanonicalAccessibilityEvidenceCodec, keepsGeneratedSnapshotsExactly) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    const AccessibilitySnapshot snapshot = generateSnapshot(seed);
    const std::string bytes = codec::encodeSnapshot(snapshot);
    ASSERT_EQ(snapshot, codec::decodeSnapshot(bytes)) << seed;
    ASSERT_EQ(bytes, codec::encode(codec::decode(bytes))) << seed;
  }
}

TEST(CanonicalAccessibilityEvidenceCodec, numbersTextsWithoutRegardToTheOrderOfCapture) {
  AccessibilitySnapshot snapshot = smallSnapshot();
  snapshot.nodes[0].attributes = {{"AXChildrenTitles", std::vector<std::string>{"é", "z", "", "zz", "Z", "é"}}};
  snapshot.issues = {issueSaying("\U00010000")};
  snapshot.warnings = {"\uFFFD", "z"};
  const Evidence evidence = codec::makeEvidence(snapshot);
  std::vector<std::string> texts;
  std::vector<std::int64_t> lengths;
  for (const auto& blob : evidence.textBlobs) {
    texts.push_back(blob.text);
    lengths.push_back(blob.utf16Length);
  }
  EXPECT_EQ((std::vector<std::string>{"", "Z", "b", "z", "zz", "é", "\uFFFD", "\U00010000"}), texts);
  EXPECT_EQ((std::vector<std::int64_t>{0, 1, 1, 1, 2, 1, 1, 2}), lengths);
  EXPECT_EQ(CanonicalAccessibilityAttributeValue(TextBlobListReference{{5, 3, 0, 4, 1, 5}}),
            evidence.nodes[0].attributes[0].value);
  EXPECT_EQ((std::vector<std::int64_t>{6, 3}), evidence.coverage.warningTextBlobIDs);
}

TEST(CanonicalAccessibilityEvidenceCodec, callsACaptureCompleteOnlyWithoutAnyLoss) {
  const auto isComplete = [](const std::function<void(AccessibilitySnapshot&)>& change) {
    AccessibilitySnapshot snapshot = smallSnapshot();
    change(snapshot);
    return codec::makeEvidence(snapshot).coverage.isComplete;
  };
  EXPECT_TRUE(isComplete([](auto&) {}));
  EXPECT_FALSE(isComplete([](auto& s) { s.issues = {issueSaying("b")}; }));
  EXPECT_FALSE(isComplete([](auto& s) { s.truncations = {{}}; }));
  EXPECT_FALSE(isComplete([](auto& s) { s.wasTruncated = true; }));
  EXPECT_FALSE(isComplete([](auto& s) { s.nodeCount = 3; }));
}

TEST(CanonicalAccessibilityEvidenceCodec, refusesSnapshotsThatItCannotKeep) {
  AccessibilitySnapshot snapshot = smallSnapshot();
  for (const std::int64_t version : {0, 3, -1}) {
    snapshot.schemaVersion = version;
    try {
      codec::makeEvidence(snapshot);
      FAIL() << version;
    } catch (const Error& error) {
      EXPECT_EQ(Error(Error::UnsupportedSourceSnapshotSchemaVersion{version}), error);
    }
  }
  snapshot = smallSnapshot();
  snapshot.nodes[1].id = 0;
  EXPECT_THROW(codec::makeEvidence(snapshot), Error);
}

TEST(CanonicalAccessibilityEvidenceCodec, namesWhatIsWrongWithEvidence) {
  using Kind = CanonicalAccessibilityRelationKind;
  struct Case {
    const char* label;
    std::function<void(Evidence&)> change;
    Error::Case expected;
    const char* message;
  };
  const std::vector<Case> cases = {
      {"version", [](Evidence& e) { e.schemaVersion = 4; }, Error::UnsupportedSchemaVersion{4},
       "Accessibility evidence schema version 4 is not supported."},
      {"source version", [](Evidence& e) { e.sourceSnapshotSchemaVersion = 0; },
       Error::UnsupportedSourceSnapshotSchemaVersion{0}, "Accessibility snapshot schema version 0 is not supported."},
      {"node twice", [](Evidence& e) { e.nodes[1].id = 0; }, Error::DuplicateNodeID{0},
       "The Accessibility evidence holds node 0 twice."},
      {"text id twice", [](Evidence& e) { e.textBlobs[1].id = 0; }, Error::DuplicateTextBlobID{0},
       "The Accessibility evidence holds text 0 twice."},
      {"text twice", [](Evidence& e) { (e.textBlobs[1] = e.textBlobs[0]).id = 1; },
       Error::DuplicateTextBlobContent{0, 1}, "Texts 0 and 1 of the Accessibility evidence are the same."},
      {"text twice, not in order",
       [](Evidence& e) {
         std::swap(e.textBlobs[0], e.textBlobs[1]);
         e.textBlobs.push_back(e.textBlobs[0]);
         e.textBlobs.back().id = 9;
       },
       Error::DuplicateTextBlobContent{1, 9}, "Texts 1 and 9 of the Accessibility evidence are the same."},
      {"no relation", [](Evidence& e) { e.nodes[1].relations.clear(); }, Error::MissingChildrenRelation{1},
       "Node 1 of the Accessibility evidence does not say which children it has."},
      {"two relations", [](Evidence& e) { e.nodes[1].relations.push_back({}); }, Error::DuplicateChildrenRelation{1},
       "Node 1 of the Accessibility evidence says twice which children it has."},
      {"other relation", [](Evidence& e) { e.nodes[1].relations.push_back({Kind::rows, {}}); },
       Error::UnsupportedRelationKind{1, Kind::rows},
       "The relation \"rows\" of node 1 of the Accessibility evidence is not supported."},
      {"text of an attribute", [](Evidence& e) { e.nodes[0].attributes[0].value = TextBlobReference{2}; },
       Error::MissingTextBlob{2}, "The Accessibility evidence refers to text 2, which it does not hold."},
      {"text of a list", [](Evidence& e) { e.nodes[0].attributes[0].value = TextBlobListReference{{0, -1}}; },
       Error::MissingTextBlob{-1}, nullptr},
      {"text of an issue", [](Evidence& e) { e.coverage.issues.emplace_back().messageTextBlobID = 5; },
       Error::MissingTextBlob{5}, nullptr},
      {"text of a warning", [](Evidence& e) { e.coverage.warningTextBlobIDs = {1, 3}; }, Error::MissingTextBlob{3},
       nullptr},
      {"numbers with a gap", [](Evidence& e) { e.textBlobs[1].id = 7; }, Error::MissingTextBlob{1}, nullptr},
      {"text changed", [](Evidence& e) { e.textBlobs[1].text = "c"; }, Error::InvalidTextBlobMetadata{1},
       "Text 1 of the Accessibility evidence does not match its digest or its lengths."},
      {"digest in capitals", [](Evidence& e) { e.textBlobs[0].sha256[0] = 'C'; }, Error::InvalidTextBlobMetadata{0},
       nullptr},
      {"byte count", [](Evidence& e) { e.textBlobs[0].utf8ByteCount = 2; }, Error::InvalidTextBlobMetadata{0}, nullptr},
      {"length", [](Evidence& e) { e.textBlobs[0].utf16Length = 0; }, Error::InvalidTextBlobMetadata{0}, nullptr},
  };
  for (const Case& c : cases) {
    Evidence evidence = codec::makeEvidence(smallSnapshot());
    c.change(evidence);
    const Error error = errorOfDecoding(evidence);
    EXPECT_EQ(Error(c.expected), error) << c.label << ": " << error.errorDescription();
    if (c.message != nullptr) EXPECT_EQ(c.message, error.errorDescription()) << c.label;
  }
}

TEST(CanonicalAccessibilityEvidenceCodec, doesNotWriteInvalidEvidence) {
  Evidence evidence = codec::makeEvidence(smallSnapshot());
  evidence.textBlobs[0].text += "!";
  EXPECT_THROW(codec::encode(evidence), Error);
}

TEST(CanonicalAccessibilityEvidenceCodec, readsTextsInAnyOrderWithAnyNumbers) {
  Evidence evidence = codec::makeEvidence(smallSnapshot());
  std::swap(evidence.textBlobs[0], evidence.textBlobs[1]);
  for (auto& blob : evidence.textBlobs) blob.id += 1000;
  for (auto& node : evidence.nodes) node.attributes[0].value = TextBlobReference{1001};
  evidence.coverage.warningTextBlobIDs = {1000};
  EXPECT_EQ(smallSnapshot(), codec::decodeSnapshot(codec::encode(evidence)));
}

TEST(CanonicalAccessibilityEvidenceCodec, readsTheCaptureTimeAsANumberOrAText) {
  const std::string bytes = codec::encodeSnapshot(smallSnapshot());
  const auto decodeWith = [&](const std::string& date) {
    std::string text = bytes;
    const std::string written = "816384947.5";
    text.replace(text.find(written), written.size(), date);
    return codec::decodeSnapshot(text).capturedAt;
  };
  EXPECT_EQ(smallSnapshot().capturedAt, decodeWith("\"2026-11-14T21:35:47.5Z\""));
  EXPECT_EQ(*parseDate("2001-01-01T00:00:01Z"), decodeWith("1"));
  for (const char* bad : {"\"yesterday\"", "true", "{}", "1e300", "-1e12"}) {
    try {
      decodeWith(bad);
      ADD_FAILURE() << bad;
    } catch (const JsonError& error) {
      EXPECT_EQ(JsonError(JsonError::InvalidValue{"capturedAt", "Expected an ISO-8601 capturedAt value."}), error);
    }
  }
}

TEST(CanonicalAccessibilityEvidenceCodec, noDamageOfOneFieldOrByteGoesUnnoticed) {
  for (const std::uint64_t seed : {3U, 5U, 8U}) {
    const AccessibilitySnapshot snapshot = generateSnapshot(seed, 5);
    const std::string bytes = codec::encodeSnapshot(snapshot);
    const Evidence original = codec::decode(bytes);
    const auto isNoticed = [&](const std::string& text) {
      try {
        const Evidence decoded = codec::decode(text);
        codec::makeSnapshot(decoded);
        return !(decoded == original);
      } catch (const JsonError&) {
        return true;
      } catch (const Error&) {
        return true;
      }
    };
    for (const CorruptedJson& corrupted : singleFieldCorruptions(bytes))
      EXPECT_TRUE(isNoticed(corrupted.text)) << corrupted.label;
    for (std::size_t length = 0; length < bytes.size(); ++length)
      EXPECT_THROW(codec::decode(std::string_view(bytes).substr(0, length)), JsonError) << length;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ 0x80);
      EXPECT_TRUE(isNoticed(damaged)) << i;
    }
  }
}

}  // namespace
}  // namespace quillo::test
