#include "QuilloCore/Capture/AccessibilityTextReader.h"

#include "CaptureFixture.h"

namespace quillo::test {
namespace {

class TextReader : public CaptureTest {
 protected:
  TextReader() { elements = application.addWindows("window number=7\n  AXTextArea"); }

  FakeElement& area() { return application[elements[1]]; }
  void setText(std::string text, std::int64_t length) {
    area().text = std::move(text);
    area().attributes["AXNumberOfCharacters"] = length;
  }

  /// What the text area holds, and what the capture says about it.
  std::string read() {
    application.calls.clear();
    const std::string text = describe(capture());
    return text.substr(text.find("AXTextArea"));
  }
  std::vector<std::pair<std::int64_t, std::int64_t>> ranges() const {
    std::vector<std::pair<std::int64_t, std::int64_t>> asked;
    for (const auto& call : application.calls) {
      if (call.operation == "parameterizedAttributeValue") asked.emplace_back(call.index, call.count);
    }
    return asked;
  }
  using Ranges = std::vector<std::pair<std::int64_t, std::int64_t>>;
};

TEST_F(TextReader, readsLongTextsInChunks) {
  setText(std::string(150'000, 'x'), 150'000);
  const auto snapshot = capture();
  EXPECT_EQ(*snapshot.nodes[1].attribute("AXFullText"), AccessibilityAttributeValue(std::string(150'000, 'x')));
  EXPECT_EQ(ranges(), (Ranges{{0, 65536}, {65536, 65536}, {131072, 18928}}));
  EXPECT_TRUE(snapshot.issues.empty() && snapshot.truncations.empty());
}

TEST_F(TextReader, readsNoMoreThanTheLimitsLeave) {
  setText("abcdefghijklmnopqrstuvwxy", 25);
  limits.maximumCharacterCount = 10;
  EXPECT_EQ(read(), R"(AXTextArea AXFullText="abcdefghij" AXNumberOfCharacters=25
characterLimit node 1 AXFullText omitted 15
)");
  limits.maximumCharacterCount = 1000;
  limits.maximumCharactersPerAttribute = 10;
  EXPECT_EQ(read(), R"(AXTextArea AXFullText="abcdefghij" AXNumberOfCharacters=25
attributeValueLimit node 1 AXFullText omitted 15
)");
  limits.maximumCharacterCount = 0;
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=25
characterLimit node 1 AXFullText omitted 25
)");
  EXPECT_EQ(ranges(), Ranges());
}

TEST_F(TextReader, discardsIncompleteTextsAndKeepsTheFallback) {
  setText(std::string(70'000, 'x'), 70'000);
  area().longestTextAnswer = 65'000;
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=70000
warning AXIncompleteTextRead node 1 AXStringForRange: The app returned 65000 of 65536 requested UTF-16 units; the partial text was discarded.
)");
  area().attributes["AXSelectedText"] = std::string("xx");
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=70000 AXSelectedText="xx"
information AXTextFallbackRetained node 1 AXStringForRange: AXStringForRange returned incomplete text; its partial result was discarded and AXSelectedText was retained as the fallback text.
)");
  area().attributes["AXValue"] = std::string("short");
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=70000 AXSelectedText="xx" AXValue="short"
information AXTextFallbackRetained node 1 AXStringForRange: AXStringForRange returned incomplete text; its partial result was discarded and AXValue was retained as the fallback text.
)");
}

TEST_F(TextReader, anErrorInTheMiddleDiscardsTheWhole) {
  setText(std::string(70'000, 'x'), 70'000);
  area().attributes["AXValue"] = std::string("short");
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    return call.index == 65536 ? std::optional(AccessibilityErrorCode::cannotComplete) : std::nullopt;
  };
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=70000 AXValue="short"
warning AXCannotComplete node 1 AXStringForRange: Could not read complete text.
)");
}

TEST_F(TextReader, aTextThatIsShorterThanItsLengthIsNotKept) {
  setText("abc", 4);
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=4
warning AXIncompleteTextRead node 1 AXStringForRange: The app returned 3 of 4 requested UTF-16 units; the partial text was discarded.
)");
  setText(std::string(70'000, 'x'), 70'000);
  area().longestTextAnswer = 65'535;
  EXPECT_EQ(read(), R"(AXTextArea AXNumberOfCharacters=70000
warning AXIncompleteTextRead node 1 AXStringForRange: The app returned 65535 of 65536 requested UTF-16 units; the partial text was discarded.
)") << "one unit short, and no surrogate pair to explain it";
  setText("", 0);
  area().attributes["AXValue"] = 0.5;
  EXPECT_EQ(read(), "AXTextArea AXNumberOfCharacters=0 AXValue=0.5\n") << "nothing to read: the value stays";
  setText("abc", -5);
  EXPECT_EQ(read(), "AXTextArea AXNumberOfCharacters=-5 AXValue=0.5\n");
  area().text.reset();
  area().attributes["AXNumberOfCharacters"] = std::int64_t{3};
  EXPECT_EQ(read(), "AXTextArea AXNumberOfCharacters=3 AXValue=0.5\n") << "it has no ranges";
}

// Both ways in which applications answer a range that ends between the halves of a surrogate pair.
TEST_F(TextReader, cutsNeverSplitASurrogatePair) {
  const std::string clef = "\U0001D11E";
  std::string text = "a";
  for (int i = 0; i < 40'000; ++i) text += clef;
  for (const bool completesPairs : {false, true}) {
    setText(text, 80'001);
    area().completesPairs = completesPairs;
    limits.maximumCharactersPerAttribute = 500'000;
    const auto whole = capture();
    EXPECT_TRUE(*whole.nodes[1].attribute("AXFullText") == AccessibilityAttributeValue(text)) << completesPairs;
    EXPECT_TRUE(whole.issues.empty());

    limits.maximumCharactersPerAttribute = 4;
    EXPECT_EQ(read(), "AXTextArea AXFullText=\"a" + clef +
                          "\" AXNumberOfCharacters=80001\nattributeValueLimit node 1 AXFullText omitted 79998\n");
  }
}

}  // namespace
}  // namespace quillo::test
