#include "QuilloLinux/Desktop/GioTrash.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "QuilloLinux/Desktop/TrashRecords.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

TEST(GioTrash, givesBackWhatItTookAndReplacesNothing) {
  // A home on the same file system as the library, whose Trash is always allowed.
  const TemporaryDirectory home;
  ::setenv("HOME", home.path().c_str(), 1);
  ::setenv("XDG_DATA_HOME", (home.path() / "data").c_str(), 1);
  const fs::path bundle = home.path() / "library" / "ä b%.quillo";
  writeFile(bundle / "manifest.json", "first");
  GioTrash trash;
  const auto trashed = trash.moveToTrash(bundle);
  ASSERT_TRUE(trashed);
  EXPECT_FALSE(fs::exists(bundle));
  EXPECT_TRUE(fs::exists(TrashRecords::recordOf(*trashed)));

  writeFile(bundle / "manifest.json", "second");
  EXPECT_THROW(trash.restore(*trashed, bundle), TrashError);
  EXPECT_TRUE(fs::exists(*trashed / "manifest.json"));
  fs::remove_all(bundle);
  trash.restore(*trashed, bundle);
  EXPECT_TRUE(fs::exists(bundle / "manifest.json"));
  EXPECT_FALSE(fs::exists(*trashed));
  EXPECT_FALSE(fs::exists(TrashRecords::recordOf(*trashed)));
  EXPECT_THROW(trash.restore(*trashed, bundle), TrashError) << "it is no longer there";
}

}  // namespace
}  // namespace quillo::test
