#include "QuilloCore/Capture/AccessibilityDocumentText.h"

#include "CaptureFixture.h"

namespace quillo::test {
namespace {

class DocumentText : public CaptureTest {
 protected:
  std::string captured(std::string_view notation) { return describe(capture(notation)); }
};

TEST_F(DocumentText, replacesTheValueOfADocument) {
  const auto snapshot = capture(R"(
    window number=7
      AXWebArea 'Page' text='All of it' value='Part'
        text value='All'
  )");
  EXPECT_EQ(describe(snapshot), R"(0 AXWindow -> 1
  1 AXWebArea -> 2 AXFullText="All of it" AXNumberOfCharacters=9 AXTitle="Page"
    2 AXStaticText AXValue="All"
)");
  EXPECT_EQ(snapshot.characterCount, 9 + 4 + 3);
}

TEST_F(DocumentText, isNotReadWhereProtectedContentIsInside) {
  EXPECT_EQ(captured(R"(
    window number=7
      AXDocument text='outer hunter2'
        AXWebArea text='inner hunter2'
          group
            AXTextField [secure]
        AXWebArea text='harmless'
  )"),
            R"(0 AXWindow -> 1
  1 AXDocument -> 2 3 AXNumberOfCharacters=13
    2 AXWebArea -> 4 AXNumberOfCharacters=13
    3 AXWebArea AXFullText="harmless" AXNumberOfCharacters=8
      4 AXGroup -> 5
        5 AXTextField/AXSecureTextField protected
information AXProtectedDocumentTextSuppressed node 1: Complete document text was not read because the document contains protected content.
information AXProtectedDocumentTextSuppressed node 2: Complete document text was not read because the document contains protected content.
)");
}

TEST_F(DocumentText, isNotReadWhereTheStructureWasNotReadCompletely) {
  const std::string suppressed =
      "information AXIncompleteDocumentTextSuppressed node 1: Complete document text was not read because the document "
      "structure could not be verified completely.\n";
  elements = application.addWindows(R"(
    window number=7
      AXWebArea text='Page'
        group
          text
          text
  )");
  const auto isSuppressed = [&] { return describe(capture()).find(suppressed) != std::string::npos; };
  EXPECT_FALSE(isSuppressed());
  limits.maximumDepth = 2;
  EXPECT_TRUE(isSuppressed()) << "depth limit";
  limits = {};
  limits.maximumNodeCount = 4;
  EXPECT_TRUE(isSuppressed()) << "node limit";
  limits = {};
  limits.maximumCharacterCount = 3;
  EXPECT_FALSE(isSuppressed()) << "a cut text is no cut structure";
  limits = {};
  application[elements[2]].errors["AXRows"] = AccessibilityErrorCode::failure;
  EXPECT_TRUE(isSuppressed()) << "members could not be read";
  limits.maximumIssueCount = 0;
  EXPECT_EQ(capture().nodes[1].attribute("AXFullText"), nullptr) << "also when the issue was only counted";
  limits = {};
  application[elements[2]].errors = {{"AXTitle", AccessibilityErrorCode::failure}};
  EXPECT_FALSE(isSuppressed()) << "another attribute";
  application[elements[2]].errors = {{"AXSubrole", AccessibilityErrorCode::failure}};
  EXPECT_TRUE(isSuppressed()) << "it might be a password";
  application[elements[2]].errors.clear();
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    return call.operation == "attributeNames" && call.element == elements[3]
               ? std::optional(AccessibilityErrorCode::failure)
               : std::nullopt;
  };
  EXPECT_TRUE(isSuppressed()) << "attributes could not be listed";
}

TEST_F(DocumentText, findsWhatCirclesReach) {
  elements = application.addWindows(R"(
    window number=7
      AXWebArea text='first'
        group
      AXWebArea text='second'
        AXTextField [secure]
  )");
  application.setChildren(elements[2], {elements[1], elements[3]});
  const auto snapshot = capture();
  EXPECT_EQ(snapshot.nodes[1].attribute("AXFullText"), nullptr) << "the first leads to the second by its group";
  EXPECT_EQ(snapshot.issues.size(), 2U);
}

class MarkedDocumentText : public DocumentText {
 protected:
  const std::vector<std::string> everything = {"AXStringForTextMarkerRange", "AXLengthForTextMarkerRange",
                                               "AXIndexForTextMarker", "AXTextMarkerForIndex"};

  std::string read(std::vector<std::string> offered) {
    application.setMarkedText(elements[1], "The whole page", std::move(offered));
    const std::string text = describe(capture());
    return text.substr(text.find("AXWebArea"));
  }

  MarkedDocumentText() { elements = application.addWindows("window number=7\n  AXWebArea"); }
};

TEST_F(MarkedDocumentText, isReadBetweenTheMarkersOfItsEnds) {
  EXPECT_EQ(read(everything), "AXWebArea AXFullText=\"The whole page\"\n");
  EXPECT_EQ(read({everything[0], everything[1]}), "AXWebArea AXFullText=\"The whole page\"\n")
      << "nothing has to be bounded";
  application[elements[1]].longestTextAnswer = 3;
  EXPECT_EQ(read(everything), R"(AXWebArea
warning AXIncompleteTextRead node 1 AXStringForTextMarkerRange: The app returned 3 of 14 requested UTF-16 units; the partial text was discarded.
)");
}

TEST_F(MarkedDocumentText, isBoundedByAMarkerWithinTheLimit) {
  limits.maximumCharactersPerAttribute = 9;
  EXPECT_EQ(read(everything), R"(AXWebArea AXFullText="The whole"
attributeValueLimit node 1 AXFullText omitted 5
)");
  application[elements[1]].markerError = -6;
  EXPECT_EQ(read(everything), R"(AXWebArea AXFullText="The"
attributeValueLimit node 1 AXFullText omitted 11
)");
  application[elements[1]].markerError = 1;
  EXPECT_EQ(read(everything), R"(AXWebArea
attributeValueLimit node 1 AXFullText omitted 14
warning AXTextMarkerRangeCouldNotBeBounded node 1: Complete document text exceeded a capture limit, but the app did not return a bounded text-marker range.
)");
  EXPECT_EQ(read({everything[0], everything[1]}), R"(AXWebArea
attributeValueLimit node 1 AXFullText omitted 14
warning AXTextMarkerRangeCouldNotBeBounded node 1: Complete document text exceeded a capture limit, but the app did not expose a bounded text-marker range.
)");
  limits.maximumCharacterCount = 0;
  EXPECT_EQ(read(everything), R"(AXWebArea
characterLimit node 1 AXFullText omitted 14
)");
}

}  // namespace
}  // namespace quillo::test
