#include "QuilloCore/Capture/AccessibilityElementInspector.h"

#include <limits>

#include "CaptureFixture.h"

namespace quillo::test {
namespace {

/// The second element of the notation is the one that a test looks at.
class ElementInspector : public CaptureTest {
 protected:
  AccessibilityElement element() const { return elements.at(1); }
  FakeElement& fake() { return application[element()]; }

  std::string inspected() {
    const AccessibilitySnapshot snapshot = capture();
    std::string text = describe(snapshot);
    return text.substr(text.find('\n') + 1);
  }
  std::string inspected(std::string_view line) {
    elements = application.addWindows("window 'Inbox' number=7\n  " + std::string(line));
    return inspected();
  }
};

TEST_F(ElementInspector, keepsEveryKindOfValueThatHasAPlaceInACapture) {
  inspected("group");
  fake().attributes = {{"AXRole", std::string("AXSlider")},
                       {"AXEnabled", true},
                       {"AXIndex", std::int64_t{3}},
                       {"AXValue", 0.5},
                       {"AXSelectedTextRange", ArtifactTextRange{2, 4}},
                       {"AXDOMClassList", std::vector<std::string>{"wide", "", "dark"}},
                       {"AXPosition", ArtifactPoint{1, 2}},
                       {"AXSize", ArtifactSize{300, 250}},
                       {"AXHelp", std::string()},
                       {"AXExpanded", UnsupportedAccessibilityValue{}},
                       {"AXDocument", element()},
                       {"AXNotUseful", std::string("never asked for")}};
  EXPECT_EQ(inspected(),
            "  1 AXSlider (1,2,300,250) AXDOMClassList=[wide,dark] AXEnabled=true AXIndex=3 AXSelectedTextRange=2+4 "
            "AXValue=0.5\n");
  const auto node = capture().nodes[1];
  EXPECT_EQ(*node.attribute("AXPosition"), AccessibilityAttributeValue(ArtifactPoint{1, 2}));
  EXPECT_EQ(*node.attribute("AXSize"), AccessibilityAttributeValue(ArtifactSize{300, 250}));

  fake().attributes = {{"AXRole", std::int64_t{4}},
                       {"AXValue", std::numeric_limits<double>::quiet_NaN()},
                       {"AXPosition", ArtifactPoint{1, std::numeric_limits<double>::infinity()}},
                       {"AXSize", ArtifactSize{3, 4}}};
  EXPECT_EQ(inspected(), "  1 AXUnknown\n") << "what is not finite cannot be written";
}

TEST_F(ElementInspector, protectedElementsKeepNeitherTextNorItsLength) {
  EXPECT_EQ(inspected("AXTextField 'Secret' [secure] text='hunter2' value='hunter2' AXOrientation=horizontal "
                      "AXSelectedText=hun label='hunter2' actions=AXConfirm"),
            "  1 AXTextField/AXSecureTextField protected AXActions=redacted AXOrientation=redacted\n");
  for (const auto& call : application.calls) {
    EXPECT_FALSE(call.operation.starts_with("parameterized"));
    if (call.element != element()) continue;
    for (const auto* name : {"AXValue", "AXTitle", "AXLabel", "AXSelectedText", "AXNumberOfCharacters"}) {
      EXPECT_EQ(call.name.find(name), std::string::npos) << call.name;
    }
  }
}

TEST_F(ElementInspector, protectionIsInheritedByWhateverIsBelow) {
  const auto snapshot = capture(R"(
    window 'Inbox' number=7
      group 'Keys' [protected]
        group
          text value='hunter2'
      text value='open'
  )");
  EXPECT_EQ(describe(snapshot), R"(0 AXWindow -> 1 2 AXTitle="Inbox"
  1 AXGroup -> 3 protected
  2 AXStaticText AXValue="open"
    3 AXGroup -> 4 protected
      4 AXStaticText protected
)");
  EXPECT_EQ(findViolation(snapshot), "");
}

TEST_F(ElementInspector, asksForNoTextWhileProtectionIsUnknown) {
  inspected("AXTextField value='hunter2' text='hunter2'");
  fake().attributes.erase("AXSubrole");
  fake().errors["AXSubrole"] = AccessibilityErrorCode::cannotComplete;
  EXPECT_EQ(inspected(), R"(  1 AXTextField
warning AXCannotComplete node 1 AXSubrole: Could not read attribute.
)");
  fake().errors = {{"AXContainsProtectedContent", AccessibilityErrorCode::attributeUnsupported}};
  EXPECT_EQ(inspected(), "  1 AXTextField AXFullText=\"hunter2\" AXNumberOfCharacters=7\n");
}

TEST_F(ElementInspector, absenceIsNoIssueAndTroubleIsOne) {
  inspected("button 'Send'");
  fake().errors = {{"AXHelp", AccessibilityErrorCode::noValue},
                   {"AXLabel", AccessibilityErrorCode::attributeUnsupported},
                   {"AXURL", AccessibilityErrorCode::notImplemented},
                   {"AXValue", static_cast<AccessibilityErrorCode>(-9)}};
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    if (call.operation != "actionNames") return std::nullopt;
    return call.element == element() ? AccessibilityErrorCode::apiDisabled : AccessibilityErrorCode::actionUnsupported;
  };
  EXPECT_EQ(inspected(), R"(  1 AXButton AXTitle="Send"
warning AXNotImplemented node 1 AXURL: Could not read attribute.
warning AXError-9 node 1 AXValue: Could not read attribute.
warning AXAPIDisabled node 1: Could not list actions.
)");
}

TEST_F(ElementInspector, readsOneByOneWhatCannotBeReadTogether) {
  inspected("button 'Send' help='Sends it'");
  const std::string together = inspected();
  auto code = AccessibilityErrorCode::failure;
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    return call.operation == "multipleAttributeValues" && call.element == element() ? std::optional(code)
                                                                                    : std::nullopt;
  };
  EXPECT_EQ(inspected(), together);
  code = AccessibilityErrorCode::invalidUIElement;
  EXPECT_EQ(inspected(), R"(  1 AXUnknown
warning AXInvalidUIElement node 1: Could not read attribute.
warning AXInvalidUIElement node 1: Could not read attribute.
)") << "an element that is gone is not asked again";
}

TEST_F(ElementInspector, anElementThatListsNothingIsStillANode) {
  inspected("button 'Send'");
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    return call.operation == "attributeNames" && call.element == element()
               ? std::optional(AccessibilityErrorCode::cannotComplete)
               : std::nullopt;
  };
  EXPECT_EQ(inspected(), R"(  1 AXButton
warning AXCannotComplete node 1: Could not list attributes.
)");
}

TEST_F(ElementInspector, singleLinesCannotForgeLines) {
  elements = application.addWindows(
      "window number=7 AXRoleDescription='main\\n# window' AXSubrole='a\\nb'\n"
      "  AXTextArea 'two\\nlines' AXRoleDescription='x\\r\\n- y' actions='A\\nB'");
  application[elements[0]].attributes["AXTitle"] = std::string("In\n\x1b\tbox");
  EXPECT_EQ(describe(capture()), R"(0 AXWindow/a b -> 1 AXRoleDescription="main # window" AXTitle="In box"
  1 AXTextArea AXActions=[A B] AXRoleDescription="x - y" AXTitle="two\nlines"
)");
}

TEST_F(ElementInspector, limitsCountUserPerceivedCharacters) {
  limits.maximumCharactersPerAttribute = 10;
  limits.maximumCharacterCount = 18;
  // A flag and a family are one character each.
  const auto snapshot = capture(
      "window number=7\n"
      "  button 'abcdefghijklmnopqrstuvwxy'\n"
      "  button '\U0001F1E9\U0001F1EA\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466xyz'\n"
      "  button 'abcdef'\n"
      "  button 'gone' help='too'");
  EXPECT_EQ(describe(snapshot), std::string("0 AXWindow -> 1 2 3 4\n"
                                            "  1 AXButton AXTitle=\"abcdefghij\"\n"
                                            "  2 AXButton AXTitle=\"\U0001F1E9\U0001F1EA\U0001F468\u200D\U0001F469"
                                            "\u200D\U0001F467\u200D\U0001F466xyz\"\n"
                                            "  3 AXButton AXTitle=\"abc\"\n"
                                            "  4 AXButton\n"
                                            "attributeValueLimit node 1 AXTitle omitted 15\n"
                                            "characterLimit node 3 AXTitle omitted 3\n"
                                            "characterLimit node 4 AXHelp omitted 3\n"
                                            "characterLimit node 4 AXTitle omitted 4\n"));
  EXPECT_EQ(snapshot.characterCount, 18);
}

TEST_F(ElementInspector, recordsEqualTruncationsOnce) {
  limits.maximumCharactersPerAttribute = 2;
  inspected("group");
  fake().attributes["AXDOMClassList"] = std::vector<std::string>{"abc", "xyz", "long"};
  EXPECT_EQ(inspected(), R"(  1 AXGroup AXDOMClassList=[ab,xy,lo]
attributeValueLimit node 0 AXTitle omitted 3
attributeValueLimit node 1 AXDOMClassList omitted 1
attributeValueLimit node 1 AXDOMClassList omitted 2
)");
}

}  // namespace
}  // namespace quillo::test
