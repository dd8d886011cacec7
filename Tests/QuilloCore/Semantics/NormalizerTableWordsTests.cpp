// Every visible word of a table stands once, whatever the table is made of.

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

TEST(NormalizerTableWords, everyWordOfEveryGeneratedTableStandsOnce) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    const RandomTable table(seed);
    const auto observation = AccessibilitySemanticNormalizer::normalize(table.snapshot, {});
    ASSERT_EQ(findViolation(observation), "") << seed;
    std::string texts;
    std::string headers;
    for (InterfaceElement element : observation.elements) {
      if (auto& columnHeaders = element.properties.edit().columnHeaders) {
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

TEST(NormalizerTableWords, deepCellsTakeLinearTime) {
  constexpr std::int64_t depth = 50'000;
  const std::string words(200'000, 'b');
  const auto observation = AccessibilitySemanticNormalizer::normalize(makeDeepCell(depth, "AXGroup", words), {});
  ASSERT_EQ(observation.elements.size(), 3);
  const std::string text = observation.elements.back().properties->rowValues->front();
  EXPECT_EQ(text.size(), words.size() + 2 * static_cast<std::size_t>(depth));
  EXPECT_EQ(AccessibilitySemanticNormalizer::normalize(makeDeepCell(depth, "AXTable", "a"), {}).elements.size(),
            depth + 4);
}

}  // namespace
}  // namespace quillo::test
