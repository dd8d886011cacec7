#include "QuilloLinux/Accessibility/AtspiBulkCache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo::test {
namespace {

using testing::ElementsAre;

AtspiObject named(const std::string& path) {
  return {":1.7", "/" + path};
}

AtspiCacheItem item(const std::string& path, const std::string& parent, std::int32_t index, std::int32_t childCount) {
  AtspiCacheItem made;
  made.object = named(path);
  made.parent = named(parent);
  made.index = index;
  made.childCount = childCount;
  made.name = path;
  return made;
}

TEST(AtspiBulkCache, childrenAreTakenOverOnlyWhereTheyAreAllThere) {
  AtspiObjectTable objects;
  const auto token = [&](const std::string& path) { return objects.tokenOf(named(path)); };
  const std::vector<AtspiCacheItem> items = {
      item("second", "whole", 1, 0), item("whole", "root", 0, 2), item("first", "whole", 0, 0),
      item("short", "root", 1, 2),   item("only", "short", 0, 0),                             // one is missing
      item("double", "root", 2, 2),  item("a", "double", 0, 0),   item("b", "double", 0, 0),  // one place, two items
      item("gap", "root", 3, 2),     item("c", "gap", 0, 0),      item("d", "gap", 2, 0),
      item("unsure", "root", 4, -1), item("e", "unsure", 0, 0),   item("huge", "gap", 2'000'000'000, 0),
      item("leaf", "root", -1, 0)};
  const AtspiBulkRecords records = makeBulkRecords(items, objects);
  ASSERT_EQ(records.size(), items.size());
  EXPECT_THAT(records.at(token("whole")).record.children, ElementsAre(token("first"), token("second")));
  EXPECT_TRUE(records.at(token("whole")).areChildrenKnown);
  EXPECT_TRUE(records.at(token("leaf")).areChildrenKnown);
  EXPECT_EQ(records.at(token("leaf")).record.name, "leaf");
  for (const char* doubtful : {"short", "double", "gap", "unsure"}) {
    EXPECT_FALSE(records.at(token(doubtful)).areChildrenKnown) << doubtful;
    EXPECT_TRUE(records.at(token(doubtful)).record.children.empty()) << doubtful;
  }
}

TEST(AtspiBulkCache, olderFormNamesItsChildren) {
  AtspiObjectTable objects;
  AtspiCacheItem parent = item("parent", "root", -1, -1);
  parent.children = {named("x"), AtspiObject{":1.7", "/org/a11y/atspi/null"}, named("y")};
  const AtspiBulkRecords records = makeBulkRecords(std::vector{parent}, objects);
  const AtspiBulkRecord& bulk = records.at(objects.tokenOf(named("parent")));
  EXPECT_TRUE(bulk.areChildrenKnown);
  EXPECT_THAT(bulk.record.children, ElementsAre(objects.tokenOf(named("x")), objects.tokenOf(named("y"))));
}

}  // namespace
}  // namespace quillo::test
