// Document-text consolidation: the outermost owner that contains a nested owner's text keeps it.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "NormalizationCases.h"

namespace quillo::test {
namespace {

void expectCases(const std::vector<NormalizationCase>& cases) {
  expectNormalized(cases, false);
}

TEST(NormalizerDocument, nestedTextIsRemovedWhereTheOuterTextContainsIt) {
  expectCases({
      {"white space aside, and as a substring even of a word",
       "webArea text='one  two\\n three'\n"
       "  document text='two three'\n"
       "  textArea text='wo\u00a0thr'\n"
       "  document text='three two'\n",
       "0 webArea content=\"one  two\\n three\"\n"
       "  1 document\n"
       "  2 textArea\n"
       "  3 document content=\"three two\"\n"},
      {"a text that is not contained covers its own descendants, the outer one the siblings",
       "webArea text='a b'\n"
       "  document text='c d'\n"
       "    document text='d'\n"
       "    document text='a'\n"
       "  document text='b'\n"
       "    document text='a b'\n",
       "0 webArea content=\"a b\"\n"
       "  1 document content=\"c d\"\n"
       "    2 document\n"
       "    3 document content=\"a\"\n"
       "  4 document\n"
       "    5 document\n"},
      {"only documents, web areas and editors own texts",
       "webArea text='a b'\n"
       "  text value='a'\n"
       "  textField value='b'\n"
       "  group help='a'\n",
       "0 webArea content=\"a b\"\n"
       "  1 text value=\"a\"\n"
       "  2 textField value=\"b\"\n"
       "  3 group help=\"a\"\n"},
  });
}

TEST(NormalizerDocument, bareContainersUnderAnOwnerVanish) {
  expectCases({
      {"only under a covering text, when nothing is in them and they say nothing",
       "window\n"
       "  group AXRoleDescription=part\n"
       "  webArea text='a'\n"
       "    group AXRoleDescription=part\n"
       "      group AXRoleDescription=part\n"
       "        unknown AXRoleDescription=part\n"
       "    group AXRoleDescription=part\n"
       "      button 'b'\n"
       "    group AXRoleDescription=part [disabled]\n"
       "    group AXRoleDescription=part AXDOMIdentifier=main\n"
       "    list AXRoleDescription=part\n"
       "    foo AXRoleDescription=part AXRequired=true\n"
       "    foo AXModal=true\n"
       "    foo AXARIABusy=true\n"
       "    foo AXInvalid=true\n"
       "    foo AXEdited=true\n"
       "    foo actions=AXPress\n"
       "    foo AXRoleDescription=part AXVisited=true\n",
       "0 window\n"
       "  1 group roleDescription=\"part\"\n"
       "  2 webArea content=\"a\"\n"
       "    6 group roleDescription=\"part\"\n"
       "      7 button \"b\"\n"
       "    8 group !enabled roleDescription=\"part\"\n"
       "    9 section roleDescription=\"part\" #dom:main\n"
       "    10 list roleDescription=\"part\"\n"
       "    11 unknown required roleDescription=\"part\"\n"
       "    12 unknown modal\n"
       "    13 unknown busy\n"
       "    14 unknown invalid\n"
       "    15 unknown edited\n"
       "    16 unknown {press}\n"},
  });
}

TEST(NormalizerDocument, manyOwnersUnderALongTextTakeLinearTime) {
  constexpr int count = 20'000;
  std::string all;
  AccessibilitySnapshot snapshot = makeSnapshot("webArea\n");
  for (std::int64_t id = 1; id <= count; ++id) {
    const std::string words = "word " + std::to_string(id * id % 99'991);
    all += words + "\n";
    AccessibilityNode& node = snapshot.nodes.emplace_back();
    node.id = id;
    node.role = "AXTextArea";
    node.attributes = {{"AXFullText", id % 2 == 0 ? words : "un" + words}};
    snapshot.nodes.front().childIDs.insert(snapshot.nodes.front().childIDs.begin(), id);  // against the text's order
  }
  snapshot.nodes.front().attributes = {{"AXFullText", all}};
  snapshot.deriveFields();
  const auto observation = AccessibilitySemanticNormalizer::normalize(snapshot, {});
  ASSERT_EQ(observation.elements.size(), count + 2);
  int kept = 0;
  for (std::size_t i = 2; i < observation.elements.size(); ++i) kept += observation.elements[i].content ? 1 : 0;
  EXPECT_EQ(kept, count / 2);
}

}  // namespace
}  // namespace quillo::test
