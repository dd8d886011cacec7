// Tables as a whole: whose headers their columns have, and what is structure and no text.

#include <vector>

#include "NormalizationCases.h"

namespace quillo::test {
namespace {

void expectCases(const std::vector<NormalizationCase>& cases) {
  expectNormalized(cases, true);
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

}  // namespace
}  // namespace quillo::test
