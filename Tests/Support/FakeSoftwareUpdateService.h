#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Updates/SoftwareUpdateError.h"
#include "QuilloCore/Updates/SoftwareUpdateService.h"

namespace quillo::test {

/// A package manager that answers what the test says, and notes what it was asked.
class FakeSoftwareUpdateService final : public SoftwareUpdateService {
 public:
  Task<SoftwarePackage> installedPackage() override {
    Task<> asking = ask("installedPackage", UpdateAttendance::unattended);
    co_await std::move(asking);
    co_return SoftwarePackage{.identifier = "q", .name = "quillo", .architecture = "amd64", .version = "0.1.0"};
  }
  Task<std::optional<SoftwarePackage>> findUpdate(SoftwarePackage /*installed*/, UpdateAttendance attendance) override {
    Task<> asking = ask("findUpdate", attendance);
    co_await std::move(asking);
    co_return update;
  }
  Task<> download(SoftwarePackage /*update*/, UpdateAttendance attendance) override {
    return ask("download", attendance);
  }
  Task<> install(SoftwarePackage /*update*/, UpdateAttendance attendance) override {
    return ask("install", attendance);
  }

  std::optional<SoftwarePackage> update;
  std::optional<SoftwareUpdateError> failure;  ///< of every operation
  bool hangs = false;                          ///< every operation waits until it is cancelled
  std::vector<std::string> log;                ///< "findUpdate", or "findUpdate for the user"

 private:
  Task<> ask(std::string operation, UpdateAttendance attendance) {
    if (attendance == UpdateAttendance::user) operation += " for the user";
    log.push_back(operation);
    if (hangs) {
      Task<> hanging = waitFor(std::make_shared<PendingResult<void>>());
      co_await std::move(hanging);
    }
    if (failure) throw SoftwareUpdateError(*failure);
  }
};

}  // namespace quillo::test
