#include "QuilloLinux/Updates/PackageKitUpdates.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Support/Clocks.h"
#include "QuilloCore/Updates/SoftwareUpdateError.h"
#include "Tests/Support/ManualLoop.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using Error = SoftwareUpdateError;

/// A package service on a bus of its own; gone with the test.
class PackageService {
 public:
  explicit PackageService(const std::string& mode) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    EXPECT_EQ(pipe2(input.data(), O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
    pid_ = fork();
    if (pid_ == 0) {
      dup2(input[0], STDIN_FILENO);
      dup2(output[1], STDOUT_FILENO);
      execl(QUILLO_PACKAGE_SERVICE, QUILLO_PACKAGE_SERVICE, mode.c_str(), nullptr);
      _exit(127);
    }
    close(input[0]);
    close(output[1]);
    input_ = input[1];
    output_ = fdopen(output[0], "r");
    address = readLine();
    EXPECT_FALSE(address.empty()) << "the service did not start";
  }
  PackageService(const PackageService&) = delete;
  PackageService& operator=(const PackageService&) = delete;
  ~PackageService() {
    close(input_);
    waitpid(pid_, nullptr, 0);
    std::fclose(output_);
  }

  /// The next call that the service got.
  std::string readLine() {
    std::array<char, 512> line{};
    if (std::fgets(line.data(), static_cast<int>(line.size()), output_) == nullptr) return {};
    std::string text(line.data());
    return text.substr(0, text.find('\n'));
  }

  std::vector<std::string> readLines(std::size_t count) {
    std::vector<std::string> lines(count);
    for (std::string& line : lines) line = readLine();
    return lines;
  }

  std::string address;

 private:
  pid_t pid_;
  int input_;
  std::FILE* output_;
};

class PackageKitUpdatesTest : public testing::Test {
 protected:
  static PackageKitUpdates::Configuration at(const std::string& address, double limit = 30) {
    return {.program = "/usr/bin/quillo-app", .busAddress = address, .limits = {.answer = limit, .silence = limit}};
  }

  template <class T>
  std::optional<Error> errorOf(Task<T> task) {
    try {
      loop.run(std::move(task));
      return std::nullopt;
    } catch (const Error& error) {
      return error;
    }
  }

  ManualLoop loop;
  const SoftwarePackage installed{
      .identifier = "quillo;0.1.0;amd64;installed", .name = "quillo", .architecture = "amd64", .version = "0.1.0"};
  const SoftwarePackage update{
      .identifier = "quillo;0.2.0;amd64;here", .name = "quillo", .architecture = "amd64", .version = "0.2.0"};
};

TEST_F(PackageKitUpdatesTest, findsDownloadsAndInstallsTheUpdateOfItsOwnPackage) {
  PackageService service("update");
  PackageKitUpdates updates(at(service.address));
  EXPECT_EQ(loop.run(updates.installedPackage()), installed);
  EXPECT_EQ(loop.run(updates.findUpdate(installed, UpdateAttendance::user)), update);
  loop.run(updates.download(update, UpdateAttendance::unattended));
  loop.run(updates.install(update, UpdateAttendance::user));
  const std::string unattended = "SetHints(['background=true', 'interactive=false'],)";
  const std::string attended = "SetHints(['background=false', 'interactive=true'],)";
  EXPECT_THAT(service.readLines(10),
              ElementsAre(unattended, "SearchFiles(4, ['/usr/bin/quillo-app'])", attended, "RefreshCache(false,)",
                          attended, "GetUpdates(2,)", unattended, "UpdatePackages(10, ['quillo;0.2.0;amd64;here'])",
                          attended, "UpdatePackages(2, ['quillo;0.2.0;amd64;here'])"));
}

TEST_F(PackageKitUpdatesTest, theNewestVersionHasNoUpdate) {
  PackageService service("current");
  PackageKitUpdates updates(at(service.address));
  EXPECT_EQ(loop.run(updates.findUpdate(installed, UpdateAttendance::unattended)), std::nullopt);
}

TEST_F(PackageKitUpdatesTest, whereThereIsNoneItSaysWhy) {
  PackageKitUpdates withoutBus(at("unix:path=/nonexistent/bus"));
  EXPECT_EQ(errorOf(withoutBus.installedPackage()), Error(Error::NoSystemBus{}));
  PackageService absent("absent");
  PackageKitUpdates withoutService(at(absent.address));
  EXPECT_EQ(errorOf(withoutService.installedPackage()), Error(Error::NoPackageService{}));
  PackageService foreign("foreign");
  PackageKitUpdates withoutPackage(at(foreign.address));
  EXPECT_EQ(errorOf(withoutPackage.installedPackage()), Error(Error::NotInstalledFromPackage{"/usr/bin/quillo-app"}));
}

TEST_F(PackageKitUpdatesTest, aServiceThatFailsHangsOrGoesIsReported) {
  PackageService refused("refused");
  PackageKitUpdates failing(at(refused.address));
  EXPECT_EQ(errorOf(failing.findUpdate(installed, UpdateAttendance::user)),
            Error(Error::ServiceFailed{"there is no network"}));

  PackageService silent("silent");
  PackageKitUpdates hanging(at(silent.address, 0.3));
  EXPECT_EQ(errorOf(hanging.findUpdate(installed, UpdateAttendance::user)), Error(Error::ServiceUnresponsive{0.3}));
  EXPECT_EQ(silent.readLines(3).back(), "Cancel()") << "the work is not left running";

  PackageService deaf("deaf");
  PackageKitUpdates unanswered(at(deaf.address, 0.3));
  EXPECT_EQ(errorOf(unanswered.installedPackage()), Error(Error::ServiceUnresponsive{0.3}));

  PackageService vanishing("vanishing");
  PackageKitUpdates lost(at(vanishing.address));
  EXPECT_EQ(errorOf(lost.findUpdate(installed, UpdateAttendance::user)),
            Error(Error::ServiceFailed{"it ended before its work was done"}));
}

TEST_F(PackageKitUpdatesTest, cancellingReleasesTheCallerAndEndsTheWork) {
  PackageService silent("silent");
  const std::uint64_t started = systemUptimeNanoseconds();
  {
    PackageKitUpdates updates(at(silent.address));
    const auto task = spawnTask(loop.executor(), [&] { return updates.findUpdate(installed, UpdateAttendance::user); });
    std::thread reader([&] { EXPECT_THAT(silent.readLines(2).back(), "RefreshCache(false,)"); });
    bool isBegun = false;
    std::thread follower([&, queue = loop.executor().queue()] {
      reader.join();
      queue->post([&] {
        task.cancel();
        isBegun = true;
      });
    });
    EXPECT_TRUE(loop.runUntil([&] { return isBegun; }));
    follower.join();
    EXPECT_THROW(loop.run(task.value()), OperationCancelled);
    EXPECT_EQ(silent.readLine(), "Cancel()");
  }
  EXPECT_LT(systemUptimeNanoseconds() - started, 20'000'000'000U) << "the end waits for the work, which has ended";
}

}  // namespace
}  // namespace quillo::test
