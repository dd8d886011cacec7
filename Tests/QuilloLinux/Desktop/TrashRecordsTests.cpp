#include "QuilloLinux/Desktop/TrashRecords.h"

#include <gtest/gtest.h>

#include <chrono>

#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

TEST(TrashRecords, sayWhereAnItemCameFrom) {
  EXPECT_EQ("/home/a b/ü%.quillo", TrashRecords::originalPath("[Trash Info]\nPath=/home/a%20b/%C3%BC%25.quillo\n"
                                                              "DeletionDate=2026-11-21T05:00:00\n"));
  EXPECT_EQ("a/b", TrashRecords::originalPath("[Trash Info]\nDeletionDate=2026-11-21T05:00:00\nPath=a/b"));
  EXPECT_EQ("50%", TrashRecords::originalPath("[Trash Info]\nPath=50%"));
  EXPECT_EQ("%zz%4", TrashRecords::originalPath("[Trash Info]\nPath=%zz%4"));
  EXPECT_EQ(std::nullopt, TrashRecords::originalPath("Path=/a"));
  EXPECT_EQ(std::nullopt, TrashRecords::originalPath("[Trash Info]\n"));
  EXPECT_EQ(std::nullopt, TrashRecords::originalPath(""));
}

TEST(TrashRecords, findTheItemThatWasTrashedLast) {
  const TemporaryDirectory directory;
  const fs::path& trash = directory.path();
  const auto put = [&](const std::string& name, const std::string& path, int minutesAgo, bool hasItem) {
    const fs::path record = trash / "info" / (name + ".trashinfo");
    writeFile(record, "[Trash Info]\nPath=" + path + "\n");
    fs::last_write_time(record, std::chrono::file_clock::now() - std::chrono::minutes{minutesAgo});
    if (hasItem) writeFile(trash / "files" / name / "manifest.json", "");
  };
  const auto find = [&] { return TrashRecords::find(trash, "/volume", "/volume/library/A.quillo"); };
  EXPECT_EQ(std::nullopt, find());
  put("A.quillo", "library/A.quillo", 3, true);
  put("B.quillo", "library/A.quillo", 0, true);
  put("A.5.quillo", "elsewhere/A.quillo", 0, true);
  put("A.4.quillo", "library/A.quillo", 0, false);
  EXPECT_EQ(trash / "files" / "A.quillo", find());
  put("A.2.quillo", "library/A.quillo", 1, true);
  put("A.3.quillo", "/volume/library/A.quillo", 2, true);
  EXPECT_EQ(trash / "files" / "A.2.quillo", find());
}

}  // namespace
}  // namespace quillo::test
