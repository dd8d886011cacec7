#include "QuilloCore/Artifacts/PosixFileSystem.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "QuilloCore/Artifacts/FileSystemError.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

TEST(PosixFileSystem, movesWithoutReplacingWhereTheKernelCannotToo) {
  using enum PosixFileSystem::ExclusiveMove;
  for (const auto move : {byTheKernel, byLookingFirst}) {
    const TemporaryDirectory directory;
    PosixFileSystem fileSystem(PosixFileSystem::defaultFileSizeLimit, move);
    const auto folder = fileSystem.openDirectory(directory.path());
    folder->makeDirectory("empty");
    folder->makeDirectory("new")->createFile("inside", "1");
    folder->createFile("file", "2");
    fs::create_symlink("nowhere", directory.path() / "link");
    for (const char* taken : {"empty", "file", "link"}) {
      for (const char* moved : {"new", "file"}) {
        EXPECT_THROW(folder->moveWithoutReplacing(moved, taken), FileSystemError) << moved << " to " << taken;
      }
    }
    folder->moveWithoutReplacing("new", "final");
    folder->moveWithoutReplacing("file", "final file");
    EXPECT_EQ("1", readFile(directory.path() / "final" / "inside"));
    EXPECT_EQ("2", readFile(directory.path() / "final file"));
    EXPECT_FALSE(fs::exists(directory.path() / "new") || fs::exists(directory.path() / "file"));
  }
}

TEST(PosixFileSystem, saysWhatItCouldNotDoWhereAndWhy) {
  const TemporaryDirectory directory;
  PosixFileSystem fileSystem;
  try {
    fileSystem.openDirectory(directory.path() / "missing");
    ADD_FAILURE();
  } catch (const FileSystemError& error) {
    EXPECT_EQ("Could not open \"" + (directory.path() / "missing").string() + "\": No such file or directory",
              error.errorDescription());
  }
  writeFile(directory.path() / "file", "");
  EXPECT_THROW(fileSystem.makeDirectories(directory.path() / "file" / "below"), FileSystemError);
}

}  // namespace
}  // namespace quillo::test
