// Table aggregation: every visible word of a row stands once in its texts, and only what has state of its own beside
// them.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

struct Case {
  std::string_view label;
  std::string_view notation;  // the first line is the source root
  std::string_view expected;
};

void expectCases(const std::vector<Case>& cases) {
  for (const Case& one : cases) {
    const auto observation = AccessibilitySemanticNormalizer::normalize(
        makeSnapshot(one.notation), {.synthesizeApplicationRoot = false, .inferConservativeActions = true});
    EXPECT_EQ(describe(observation), one.expected) << one.label;
    EXPECT_EQ(findViolation(observation), "") << one.label;
  }
}

TEST(NormalizerTable, rowCarriesOneTextForEachOutermostCell) {
  expectCases({
      {"cells with names, with texts below, with both, and nested ones",
       "table\n"
       "  row\n"
       "    cell 'One'\n"
       "    group\n"
       "      cell\n"
       "        text value='two'\n"
       "        group\n"
       "          text value='parts'\n"
       "    cell 'three  parts'\n"
       "      text value='three'\n"
       "      text value='parts'\n"
       "    cell 'outer'\n"
       "      cell 'inner'\n",
       "0 table\n"
       "  1 row rowValues=[\"One\", \"two parts\", \"three parts\", \"outer inner\"]\n"},
      {"an empty cell keeps its column's place",
       "table\n"
       "  row\n"
       "    cell AXEnabled=true\n"
       "    cell 'b'\n"
       "    group\n"
       "      cell\n"
       "        image\n",
       "0 table\n"
       "  1 row rowValues=[\"\", \"b\", \"\"]\n"},
      {"words are compared whole",
       "table\n"
       "  row\n"
       "    cell '1'\n"
       "      text value='15'\n"
       "    cell 'Total: 15 EUR'\n"
       "      text value='15'\n"
       "    cell 'Name'\n"
       "      text 'Name:'\n"
       "    cell '1 2'\n"
       "      text value='\u2022 '\n"
       "      text value='1'\n"
       "      text value='\u2022 '\n"
       "      text value='2'\n"
       "    cell '-'\n"
       "      text value='-'\n",
       "0 table\n"
       "  1 row rowValues=[\"1 15\", \"Total: 15 EUR\", \"Name:\", \"\u2022 1 \u2022 2\", \"-\"]\n"},
      {"what one reads of a number is its text",
       "table\n"
       "  row\n"
       "    cell value=12\n"
       "    cell\n"
       "      text value=0.5\n"
       "    cell\n"
       "      image description='locked'\n",
       "0 table\n"
       "  1 row rowValues=[\"12\", \"0.5\", \"locked\"]\n"},
      {"a row without cells is left alone",
       "table\n"
       "  row 'flat'\n"
       "  row\n"
       "    text value='loose'\n",
       "0 table\n"
       "  1 row \"flat\"\n"
       "  2 row\n"
       "    3 text value=\"loose\"\n"},
      {"text outside the cells stays",
       "table\n"
       "  row\n"
       "    text value='loose'\n"
       "    cell 'a'\n",
       "0 table\n"
       "  1 row rowValues=[\"a\"]\n"
       "    2 text value=\"loose\"\n"},
      {"a list is no table",
       "list\n"
       "  row\n"
       "    cell 'a'\n",
       "0 list\n"
       "  1 row\n"
       "    2 cell \"a\"\n"},
  });
}

TEST(NormalizerTable, onlyWhatSaysMoreThanTheTextsStaysBesideThem) {
  expectCases({
      {"interactive content, in source order",
       "table\n"
       "  row\n"
       "    cell\n"
       "      group\n"
       "        link 'Site' AXURL=http://a.example/\n"
       "        text value='by me'\n"
       "    cell\n"
       "      checkBox value=1\n"
       "    cell\n"
       "      textField value='Bob'\n",
       "0 table\n"
       "  1 row rowValues=[\"Site by me\", \"\", \"Bob\"]\n"
       "    4 link \"Site\" url=\"http://a.example/\" {press?}\n"
       "    7 checkbox value=1 checked:on {toggle?}\n"
       "    9 textField value=\"Bob\" {edit? focus?}\n"},
      {"state, identifiers, help and values that are no text",
       "table\n"
       "  row\n"
       "    cell 'a' id=first\n"
       "    cell 'b' [disabled]\n"
       "    cell 'c' AXEnabled=true AXVisited=true\n"
       "    cell 'd' help='aid'\n"
       "    cell\n"
       "      progressIndicator value=0.25\n",
       "0 table\n"
       "  1 row rowValues=[\"a\", \"b\", \"c\", \"d\", \"\"]\n"
       "    2 cell \"a\" #accessibility:first\n"
       "    3 cell \"b\" !enabled\n"
       "    5 cell \"d\" help=\"aid\"\n"
       "    7 progressIndicator value=0.25\n"},
      {"an input shows its value, a toggle's name stands beside it",
       "table\n"
       "  row\n"
       "    cell\n"
       "      textField 'Name' value='Bob'\n"
       "    cell\n"
       "      checkBox 'Paid' value=0\n"
       "      text value='Paid'\n"
       "    cell\n"
       "      text value='ha'\n"
       "      text value='ha'\n",
       "0 table\n"
       "  1 row rowValues=[\"Bob\", \"Paid\", \"ha ha\"]\n"
       "    3 textField \"Name\" value=\"Bob\" {edit? focus?}\n"
       "    5 checkbox \"Paid\" value=0 checked:off {toggle?}\n"},
      {"a row's name that repeats its cells goes",
       "table\n"
       "  row 'src4 kB'\n"
       "    cell 'src'\n"
       "    cell '4 kB'\n"
       "  row 'Folder src'\n"
       "    cell 'src'\n",
       "0 table\n"
       "  1 row rowValues=[\"src\", \"4 kB\"]\n"
       "  4 row \"Folder src\" rowValues=[\"src\"]\n"},
      {"a row is selected when all its cells are",
       "table\n"
       "  row\n"
       "    cell 'a' [selected]\n"
       "    cell\n"
       "    cell [selected]\n"
       "  row AXSelected=false\n"
       "    cell 'b' [selected]\n",
       "0 table\n"
       "  1 row selected rowValues=[\"a\", \"\", \"\"]\n"
       "  5 row !selected rowValues=[\"b\"]\n"
       "    6 cell \"b\" selected\n"},
      {"cells of a selected row need not say so again",
       "table\n"
       "  row [selected]\n"
       "    cell 'a' [selected]\n"
       "    cell 'b' [selected, focused]\n"
       "  row\n"
       "    cell 'c' [selected]\n"
       "    cell 'd'\n",
       "0 table\n"
       "  1 row selected rowValues=[\"a\", \"b\"]\n"
       "    3 cell \"b\" focused selected\n"
       "  4 row rowValues=[\"c\", \"d\"]\n"
       "    5 cell \"c\" selected\n"},
      {"a row is open when the one cell that opens it is",
       "table\n"
       "  row\n"
       "    cell 'src' AXExpanded=true\n"
       "    cell 'folder'\n"
       "  row\n"
       "    cell 'a' AXExpanded=true\n"
       "    cell 'b' AXExpanded=false\n",
       "0 table\n"
       "  1 row expanded rowValues=[\"src\", \"folder\"]\n"
       "  4 row rowValues=[\"a\", \"b\"]\n"
       "    5 cell \"a\" expanded\n"
       "    6 cell \"b\" !expanded\n"},
      {"protected and hidden cells stay whole and leave their place empty",
       "table\n"
       "  row\n"
       "    cell 'PIN' [protected] value=1234\n"
       "    cell AXHidden=true\n"
       "      text value='later'\n"
       "    cell 'c'\n",
       "0 table\n"
       "  1 row rowValues=[\"\", \"\", \"c\"]\n"
       "    2 cell \"PIN\" protected\n"
       "    3 cell hidden\n"
       "      4 text value=\"later\"\n"},
  });
}

TEST(NormalizerTable, headersComeFromHeaderCellsOrColumnsAndAreNotRepeated) {
  expectCases({
      {"a header row with an empty corner",
       "table\n"
       "  row\n"
       "    cell\n"
       "    cell 'A' subrole=AXColumnHeader\n"
       "    cell subrole=AXColumnHeader\n"
       "      text value='B'\n"
       "  row\n"
       "    cell 'x' subrole=AXRowHeader\n"
       "    cell '1'\n"
       "    cell '2'\n",
       "0 table\n"
       "  6 row columnHeaders=[\"\", \"A\", \"B\"] rowValues=[\"x\", \"1\", \"2\"]\n"},
      {"a header row without the corner above the rows' own headers",
       "table\n"
       "  row\n"
       "    cell 'A' subrole=AXColumnHeader\n"
       "    cell 'B' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell '1' subrole=AXRowHeader\n"
       "    cell 'x'\n"
       "    cell 'y'\n",
       "0 table\n"
       "  4 row columnHeaders=[\"\", \"A\", \"B\"] rowValues=[\"1\", \"x\", \"y\"]\n"},
      {"headers that offer more than a press or a menu stay",
       "table\n"
       "  group\n"
       "    row\n"
       "      cell 'A' subrole=AXColumnHeader actions=AXPress,AXSort\n"
       "      cell 'B' subrole=AXColumnHeader actions=AXPress,AXShowMenu\n"
       "  row\n"
       "    cell '1'\n"
       "    cell '2'\n",
       "0 table\n"
       "  2 row columnHeaders=[\"A\", \"B\"]\n"
       "    3 cell \"A\" {press sort}\n"
       "  5 row columnHeaders=[\"A\", \"B\"] rowValues=[\"1\", \"2\"]\n"},
      {"a header that spans columns names none, and headers may change",
       "table\n"
       "  row\n"
       "    cell 'Wide' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell 'A' subrole=AXColumnHeader\n"
       "    cell 'B' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell '1'\n"
       "    cell '2'\n"
       "  row\n"
       "    cell 'C' subrole=AXColumnHeader\n"
       "    cell 'D' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell '3'\n"
       "    cell '4'\n",
       "0 table\n"
       "  1 row rowValues=[\"Wide\"]\n"
       "  6 row columnHeaders=[\"A\", \"B\"] rowValues=[\"1\", \"2\"]\n"
       "  12 row columnHeaders=[\"C\", \"D\"] rowValues=[\"3\", \"4\"]\n"},
      {"a table of headers only keeps them as its row",
       "table\n"
       "  row\n"
       "    cell 'A' subrole=AXColumnHeader\n",
       "0 table\n"
       "  1 row rowValues=[\"A\"]\n"},
      {"header cells outside the rows",
       "table\n"
       "  group\n"
       "    cell 'A' subrole=AXColumnHeader\n"
       "    cell 'B' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell '1'\n"
       "    cell '2'\n",
       "0 table\n"
       "  4 row columnHeaders=[\"A\", \"B\"] rowValues=[\"1\", \"2\"]\n"},
      {"columns",
       "table\n"
       "  row\n"
       "    cell '1'\n"
       "    cell '2'\n"
       "    cell '3'\n"
       "  column 'A'\n"
       "  column AXIndex=1\n"
       "  column 'C' [selected]\n",
       "0 table\n"
       "  1 row columnHeaders=[\"A\", \"\", \"C\"] rowValues=[\"1\", \"2\", \"3\"]\n"
       "  7 column \"C\" selected\n"},
      {"a first row of plain titles",
       "table\n"
       "  row\n"
       "    group\n"
       "      text value='A'\n"
       "    group\n"
       "      text value='B'\n"
       "  list\n"
       "    row\n"
       "      cell '1'\n"
       "      cell '2'\n",
       "0 table\n"
       "  6 list\n"
       "    7 row columnHeaders=[\"A\", \"B\"] rowValues=[\"1\", \"2\"]\n"},
      {"a first row of text that fits no row",
       "table\n"
       "  row\n"
       "    text value='Note'\n"
       "  row\n"
       "    cell '1'\n"
       "    cell '2'\n",
       "0 table\n"
       "  1 row\n"
       "    2 text value=\"Note\"\n"
       "  3 row rowValues=[\"1\", \"2\"]\n"},
      {"columns without rows stay",
       "table\n"
       "  column 'A'\n",
       "0 table\n"
       "  1 column \"A\"\n"},
  });
}

TEST(NormalizerTable, structureThatTextsCannotStandForIsKept) {
  expectCases({
      {"outline rows keep their nesting",
       "outline 'Files'\n"
       "  outlineRow [expanded] AXDisclosureLevel=0\n"
       "    cell 'home'\n"
       "    outlineRow AXDisclosureLevel=1\n"
       "      cell 'notes'\n",
       "0 tree \"Files\"\n"
       "  1 treeItem expanded disclosureLevel=0 rowValues=[\"home\"] {select?}\n"
       "    3 treeItem disclosureLevel=1 rowValues=[\"notes\"] {select?}\n"},
      {"lists and headings in a table of data are text",
       "table\n"
       "  row\n"
       "    cell 'A' subrole=AXColumnHeader\n"
       "    cell 'B' subrole=AXColumnHeader\n"
       "  row\n"
       "    cell\n"
       "      heading 'One'\n"
       "    cell\n"
       "      list\n"
       "        listItem\n"
       "          link 'x'\n"
       "        listItem\n"
       "          text value='y'\n",
       "0 table\n"
       "  4 row columnHeaders=[\"A\", \"B\"] rowValues=[\"One\", \"x y\"]\n"
       "    10 link \"x\" {press?}\n"},
      {"a table that lays out a page, and one inside it",
       "table\n"
       "  row\n"
       "    cell\n"
       "      heading 'News'\n"
       "    cell 'aside'\n"
       "  row\n"
       "    cell\n"
       "      table\n"
       "        row\n"
       "          cell 'a'\n"
       "          cell 'b'\n",
       "0 table\n"
       "  1 row\n"
       "    2 cell\n"
       "      3 heading \"News\"\n"
       "    4 cell \"aside\"\n"
       "  5 row\n"
       "    6 cell\n"
       "      7 table\n"
       "        8 row rowValues=[\"a\", \"b\"]\n"},
  });
}

/// Grows a random table; every text has a word of its own, which is returned.
class RandomTable {
 public:
  explicit RandomTable(unsigned seed) : random_(seed) {
    const std::int64_t table = add(std::nullopt, "AXTable");
    const std::size_t columns = 1 + random_() % 3;
    for (std::size_t row = 0; row < 4; ++row) addRow(table, columns, row == 0 && random_() % 2 == 0);
    if (random_() % 3 == 0) addText(add(table, "AXColumn"), "AXTitle");
    snapshot.deriveFields();
  }

  AccessibilitySnapshot snapshot;
  std::vector<std::string> words;  // of texts that offer nothing else

 private:
  std::int64_t add(std::optional<std::int64_t> parent, std::string_view role) {
    const auto id = static_cast<std::int64_t>(snapshot.nodes.size());
    AccessibilityNode& node = snapshot.nodes.emplace_back();
    node.id = id;
    node.role = role;
    if (parent) snapshot.nodes[static_cast<std::size_t>(*parent)].childIDs.push_back(id);
    return id;
  }

  void addText(std::int64_t id, std::string_view attribute) {
    words.push_back("w" + std::to_string(id) + "w");
    snapshot.nodes[static_cast<std::size_t>(id)].attributes.push_back({std::string(attribute), words.back()});
  }

  void addRow(std::int64_t table, std::size_t columns, bool isHeader) {
    const std::int64_t parent = random_() % 4 == 0 ? add(table, "AXGroup") : table;
    const std::int64_t row = add(parent, random_() % 8 == 0 ? "AXOutlineRow" : "AXRow");
    if (random_() % 8 == 0) addText(add(row, "AXStaticText"), "AXValue");
    for (std::size_t column = 0; column < columns; ++column) {
      const std::int64_t cell = add(random_() % 4 == 0 ? add(row, "AXGroup") : row, "AXCell");
      if (isHeader) snapshot.nodes[static_cast<std::size_t>(cell)].subrole = "AXColumnHeader";
      if (random_() % 3 == 0) addText(cell, "AXTitle");
      addContent(cell, 3);
    }
  }

  void addContent(std::int64_t parent, int depth) {
    static constexpr std::array<std::string_view, 8> roles = {"AXGroup", "AXList",  "AXListItem", "AXHeading",
                                                              "AXCell",  "AXImage", "AXTable",    "AXTextArea"};
    for (std::size_t count = random_() % 3; count > 0; --count) {
      if (depth == 0 || random_() % 2 == 0) {
        addText(add(parent, "AXStaticText"), "AXValue");
        continue;
      }
      const std::int64_t id = add(parent, roles[random_() % (random_() % 4 == 0 ? roles.size() : 4)]);
      if (random_() % 4 == 0) addText(id, "AXDescription");
      if (random_() % 16 == 0) snapshot.nodes[static_cast<std::size_t>(id)].attributes.push_back({"AXHidden", true});
      addContent(id, depth - 1);
    }
  }

  std::mt19937 random_;
};

TEST(NormalizerTable, everyWordOfEveryGeneratedTableStandsOnce) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    const RandomTable table(seed);
    const auto observation = AccessibilitySemanticNormalizer::normalize(table.snapshot, {});
    ASSERT_EQ(findViolation(observation), "") << seed;
    std::string texts;
    std::string headers;
    for (InterfaceElement element : observation.elements) {
      if (auto& columnHeaders = element.properties.columnHeaders) {
        for (const std::string& header : *columnHeaders) headers += header + " ";
        columnHeaders.reset();
      }
      texts += describe(element) + "\n";
    }
    for (const std::string& word : table.words) {
      const std::size_t first = texts.find(word);
      const bool isOnce = first != std::string::npos ? texts.find(word, first + 1) == std::string::npos
                                                     : headers.find(word) != std::string::npos;
      ASSERT_TRUE(isOnce) << word << " of seed " << seed << "\n" << describe(observation);
    }
  }
}

/// A table of one cell around `depth` nested elements.
AccessibilitySnapshot makeDeepCell(std::int64_t depth, const std::string& role, const std::string& innermost) {
  AccessibilitySnapshot snapshot = makeSnapshot("table\n  row\n    cell 'a'\n");
  for (std::int64_t id = 3; id < 3 + depth; ++id) {
    AccessibilityNode& node = snapshot.nodes.emplace_back();
    node.id = id;
    node.role = role;
    node.attributes = {{"AXTitle", id == 2 + depth ? innermost : std::string("a")}};
    snapshot.nodes[static_cast<std::size_t>(id - 1)].childIDs = {id};
  }
  snapshot.deriveFields();
  return snapshot;
}

TEST(NormalizerTable, deepCellsTakeLinearTime) {
  constexpr std::int64_t depth = 50'000;
  const std::string words(200'000, 'b');
  const auto observation = AccessibilitySemanticNormalizer::normalize(makeDeepCell(depth, "AXGroup", words), {});
  ASSERT_EQ(observation.elements.size(), 3);
  const std::string text = observation.elements.back().properties.rowValues->front();
  EXPECT_EQ(text.size(), words.size() + 2 * static_cast<std::size_t>(depth));
  EXPECT_EQ(AccessibilitySemanticNormalizer::normalize(makeDeepCell(depth, "AXTable", "a"), {}).elements.size(),
            depth + 4);
}

}  // namespace
}  // namespace quillo::test
