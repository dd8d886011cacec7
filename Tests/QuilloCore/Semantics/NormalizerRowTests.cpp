// The rows of tables: one text for each cell, and beside them only what says more.

#include <vector>

#include "NormalizationCases.h"

namespace quillo::test {
namespace {

void expectCases(const std::vector<NormalizationCase>& cases) {
  expectNormalized(cases, true);
}

TEST(NormalizerRow, rowCarriesOneTextForEachOutermostCell) {
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
  });
}

TEST(NormalizerRow, onlyWhatSaysMoreThanTheTextsStaysBesideThem) {
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
      {"what is selected inside a selected row, apart from its cells",
       "table\n"
       "  row [selected]\n"
       "    cell 'a' [selected]\n"
       "    cell\n"
       "      text 'b' [selected]\n",
       "0 table\n"
       "  1 row selected rowValues=[\"a\", \"b\"]\n"
       "    4 text \"b\" selected\n"},
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

}  // namespace
}  // namespace quillo::test
