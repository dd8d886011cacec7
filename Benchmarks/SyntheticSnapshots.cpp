#include "SyntheticSnapshots.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace quillo::bench {
namespace {

class SnapshotMaker {
 public:
  SnapshotMaker() {
    add(std::nullopt, "AXWindow", {{"AXTitle", std::string("Benchmark")}});
    snapshot_.capturedAt = Date(std::chrono::seconds(1'790'000'000));
    snapshot_.targetProcessIdentifier = 4711;
  }

  std::int64_t add(std::optional<std::int64_t> parent, std::string role,
                   std::vector<AccessibilityAttribute> attributes) {
    const auto id = static_cast<std::int64_t>(snapshot_.nodes.size());
    AccessibilityNode node;
    node.id = id;
    node.parentID = parent;
    node.role = std::move(role);
    node.frame = ArtifactRect{.x = 10, .y = static_cast<double>(10 + id % 700), .width = 300, .height = 18};
    if (id == 0) node.frame = ArtifactRect{.x = 0, .y = 0, .width = 1280, .height = 800};
    node.attributes = std::move(attributes);
    node.sortAttributes();
    if (parent) {
      AccessibilityNode& owner = snapshot_.nodes[static_cast<std::size_t>(*parent)];
      node.depth = owner.depth + 1;
      owner.childIDs.push_back(id);
    }
    snapshot_.nodes.push_back(std::move(node));
    return id;
  }

  std::int64_t count() const { return static_cast<std::int64_t>(snapshot_.nodes.size()); }

  AccessibilitySnapshot take() {
    snapshot_.deriveFields();
    return std::move(snapshot_);
  }

 private:
  AccessibilitySnapshot snapshot_;
};

/// Words that repeat as those of a language do: a few often, most seldom.
class Words {
 public:
  std::string next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    const std::uint64_t rank = (state_ >> 33U) % 5000;
    return fmt::format("{}{}", stems[rank % stems.size()], rank * rank % 997);
  }

  std::string sentence(int length) {
    std::string text = next();
    for (int i = 1; i < length; ++i) text += " " + next();
    return text + ".";
  }

 private:
  static constexpr std::array<std::string_view, 12> stems = {"road", "window", "text",  "leaf", "river", "stone",
                                                             "lamp", "north",  "paper", "salt", "wheel", "voice"};
  std::uint64_t state_ = 42;
};

AccessibilityAttribute text(std::string name, std::string value) {
  return {std::move(name), std::move(value)};
}

}  // namespace

AccessibilitySnapshot makePage(std::int64_t nodeCount) {
  SnapshotMaker maker;
  Words words;
  const std::int64_t area = maker.add(0, "AXWebArea", {text("AXTitle", "A long page")});
  while (maker.count() + 14 <= nodeCount) {
    const std::int64_t section =
        maker.add(area, "AXGroup", {text("AXDOMIdentifier", fmt::format("s{}", maker.count()))});
    maker.add(section, "AXHeading", {text("AXTitle", words.sentence(4)), {"AXHeadingLevel", std::int64_t{2}}});
    const std::int64_t wrapper = maker.add(section, "AXGroup", {});
    for (int i = 0; i < 4; ++i) maker.add(wrapper, "AXStaticText", {text("AXValue", words.sentence(9))});
    const std::int64_t link = maker.add(wrapper, "AXLink", {text("AXTitle", words.sentence(2))});
    maker.add(link, "AXStaticText", {text("AXValue", words.next())});
    const std::int64_t list = maker.add(section, "AXList", {});
    const std::int64_t item = maker.add(list, "AXListItem", {});
    maker.add(item, "AXStaticText", {text("AXValue", words.sentence(5))});
    maker.add(section, "AXButton",
              {text("AXTitle", words.next()), {"AXActions", std::vector<std::string>{"AXPress", "AXShowMenu"}}});
    maker.add(section, "AXTextField", {text("AXLabel", words.next()), text("AXValue", words.next())});
  }
  while (maker.count() < nodeCount) maker.add(area, "AXStaticText", {text("AXValue", words.next())});
  return maker.take();
}

AccessibilitySnapshot makeDocument(std::int64_t wordCount) {
  SnapshotMaker maker;
  Words words;
  const std::int64_t area = maker.add(0, "AXWebArea", {});
  std::string all;
  for (std::int64_t i = 0; i < wordCount; ++i) {
    const std::string word = words.next();
    all += word + " ";
    maker.add(area, "AXStaticText", {text("AXValue", word)});
  }
  AccessibilitySnapshot snapshot = maker.take();
  snapshot.nodes[static_cast<std::size_t>(area)].attributes = {text("AXFullText", all)};
  return snapshot;
}

AccessibilitySnapshot makeTable(std::int64_t rowCount, std::int64_t columnCount) {
  SnapshotMaker maker;
  Words words;
  const std::int64_t table = maker.add(0, "AXTable", {text("AXTitle", "Measurements")});
  for (std::int64_t row = 0; row <= rowCount; ++row) {
    const std::int64_t rowID = maker.add(table, "AXRow", {});
    for (std::int64_t column = 0; column < columnCount; ++column) {
      const std::int64_t cell = maker.add(rowID, "AXCell", {});
      maker.add(cell, "AXStaticText", {text("AXValue", words.next())});
    }
  }
  return maker.take();
}

}  // namespace quillo::bench
