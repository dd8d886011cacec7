#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "QuilloApp/Inspector/AccessibilityLedger.h"
#include "QuilloApp/Inspector/LedgerModel.h"
#include "QuilloApp/Inspector/LedgerWords.h"
#include "QuilloCore/Semantics/InterfaceRoleNames.h"
#include "Tests/Support/ObservationBuilder.h"

namespace quillo::test {
namespace {

std::shared_ptr<const AccessibilityLedger> ledgerOf(InterfaceObservation observed) {
  return std::make_shared<AccessibilityLedger>(std::make_shared<const InterfaceObservation>(std::move(observed)));
}

std::shared_ptr<const AccessibilityLedger> ledgerOf(std::string_view notation) {
  return ledgerOf(observation(notation));
}

/// The whole tree as a view walks it.
std::string shown(const LedgerModel& model, const QModelIndex& parent = {}, int level = 0) {
  std::string text;
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    text += std::string(2 * static_cast<std::size_t>(level), ' ') + index.data().toString().toStdString() + "\n";
    text += shown(model, index, level + 1);
  }
  return text;
}

constexpr std::string_view form = R"(
window 'Sign in' bounds='100 50 400 300'
  textField 'Name' value='Ada\nLovelace' [focused] bounds='120 80 200 30'
  textField 'Password' redacted=1 [protected] bounds='120 120 200 30'
  group bounds='120 160 360 100'
    checkbox 'Remember me' number=1 [checked] bounds='120 160 100 20'
    slider 'Volume' number=0.5 bounds='120 180 100 20'
    text 'Out of the way' [offscreen] bounds='120 160 10 10'
    button 'Send' [disabled, hidden]
  textArea 'Note' content='Dear all,\nthank you' value='Dear all,'
)";

TEST(Ledger, saysEveryElementInWords) {
  LedgerModel model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  const auto ledger = ledgerOf(form);
  model.setLedger(ledger);
  model.setLedger(ledger);
  EXPECT_EQ(1, resets.count());
  EXPECT_EQ(
      "window Sign in\n"
      "  text field Name: Ada Lovelace, focused\n"
      "  text field Password, protected, its text was not read\n"
      "  group\n"
      "    checkbox Remember me, checked\n"
      "    slider Volume: 0.5\n"
      "    text Out of the way, scrolled out of sight\n"
      "    button Send, hidden, disabled\n"
      "  text area Note: Dear all, thank you\n",
      shown(model));
  EXPECT_EQ("Ada\nLovelace", ledger->text(1)) << "as it was captured";
  EXPECT_EQ("", ledger->text(2)) << "protected";
  EXPECT_EQ("Remember me", ledger->text(4));
  EXPECT_EQ(
      "group\n  checkbox “Remember me”\n  slider “Volume”: 0.5\n  text “Out of the way”\n"
      "  button “Send”\n",
      ledger->branchText(3));
  model.setLedger(nullptr);
  EXPECT_EQ(0, model.rowCount());
}

TEST(Ledger, saysWhatIsOutOfSightOnlyBecauseItsMenuIsClosed) {
  LedgerModel model;
  model.setLedger(ledgerOf(R"(
menuBar
  menuItem 'File'
    menu [offscreen]
      menuItem 'Recent' [offscreen]
        menuItem 'Letter' [offscreen]
menu
  menuItem 'Far below' [offscreen]
)"));
  EXPECT_EQ(
      "menu bar\n  menu item File\n    menu, in a closed menu\n      menu item Recent, in a closed menu\n"
      "        menu item Letter, in a closed menu\nmenu\n  menu item Far below, scrolled out of sight\n",
      shown(model));
}

TEST(Ledger, hasAWordForEveryRole) {
  for (std::size_t number = 0; number < EnumerationNames<InterfaceSemanticRole>::names.size(); ++number) {
    const auto role = static_cast<InterfaceSemanticRole>(number);
    EXPECT_EQ(roleName(role), roleWord(role).toStdString());
  }
}

TEST(Ledger, findsTheSmallestElementThatShowsAtAPoint) {
  const auto ledger = ledgerOf(form);
  struct Case {
    const char* label;
    ArtifactPoint point;
    std::optional<std::int32_t> line;
  };
  for (const Case& each : std::vector<Case>{{"a field", {.x = 130, .y = 90}, 1},
                                            {"what is out of sight shows nothing", {.x = 121, .y = 161}, 4},
                                            {"between the controls", {.x = 400, .y = 200}, 3},
                                            {"the right edge is outside", {.x = 500, .y = 60}, std::nullopt},
                                            {"the left edge is inside", {.x = 100, .y = 50}, 0},
                                            {"outside", {.x = 10, .y = 10}, std::nullopt}})
    EXPECT_EQ(each.line, ledger->lineAt(each.point)) << each.label;
  EXPECT_EQ((ArtifactRect{.x = 120, .y = 80, .width = 200, .height = 30}), ledger->line(1).frame);
}

TEST(Ledger, findsWordsInEveryOrderAndCase) {
  const auto ledger = ledgerOf(form);
  struct Case {
    const char* query;
    std::vector<std::int32_t> lines;
  };
  for (const Case& each : std::vector<Case>{{"LOVELACE ada", {1}},
                                            {"text field", {1, 2}},
                                            {"thank", {8}},
                                            {"  ", {}},
                                            {"ada password", {}},
                                            {"send", {7}}})
    EXPECT_EQ(each.lines, ledger->linesMatching(each.query)) << each.query;
}

TEST(Ledger, isATreeWhateverTheObservationSays) {
  InterfaceObservation hostile;
  const auto add = [&](const std::string& id, std::optional<std::string> parent) {
    InterfaceElement element;
    element.id = id;
    element.parentID = std::move(parent);
    element.label = id;
    element.role = InterfaceSemanticRole::group;
    hostile.elements.push_back(std::move(element));
  };
  add("own parent", "own parent");
  add("early child", "late parent");
  add("late parent", "early child");
  add("twin", std::nullopt);
  add("twin", "twin");
  hostile.elements[0].bounds = ArtifactRect{.width = 1e308, .height = std::numeric_limits<double>::infinity()};
  LedgerModel model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  model.setLedger(ledgerOf(hostile));
  EXPECT_EQ("group own parent\ngroup early child\n  group late parent\ngroup twin\n  group twin\n", shown(model));
  EXPECT_EQ(std::nullopt, model.ledger()->lineAt({.x = 1, .y = 1}));
  model.setLedger(ledgerOf(InterfaceObservation{}));
  EXPECT_EQ(0, model.rowCount());
}

TEST(Ledger, showsEveryLineOfAChainThatIsTooDeepToIndent) {
  constexpr std::int32_t depth = 20'000;
  InterfaceObservation chain;
  for (std::int32_t number = 0; number < depth; ++number) {
    InterfaceElement element;
    element.id = std::to_string(number);
    if (number > 0) element.parentID = std::to_string(number - 1);
    chain.elements.push_back(std::move(element));
  }
  const auto ledger = ledgerOf(std::move(chain));
  EXPECT_EQ(depth - 1, ledger->line(depth - 1).depth);
  std::int32_t level = 0;
  for (std::int32_t line = depth - 1; line >= 0; line = ledger->line(line).parent) ++level;
  EXPECT_EQ(AccessibilityLedger::deepestLevel + 1, level);
  EXPECT_EQ(static_cast<std::size_t>(depth - AccessibilityLedger::deepestLevel),
            ledger->children(AccessibilityLedger::deepestLevel - 1).size());
  const std::string text = ledger->branchText(0);
  EXPECT_EQ(depth, std::ranges::count(text, '\n'));
}

TEST(Ledger, shownTextsAreBoundedAndStayOnTheirLine) {
  const std::string flood = "one\ntwo" + std::string(100'000, 'x');
  EXPECT_EQ(longestShownText + 1, shownText(flood).size());
  EXPECT_TRUE(shownText(flood).startsWith(QStringLiteral("one two")) ||
              shownText(flood).startsWith(QStringLiteral("one\\ntwo")));
  EXPECT_EQ(QString(), shownText(""));
}

}  // namespace
}  // namespace quillo::test
