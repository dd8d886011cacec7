#include "QuilloLinux/Updates/PackageKitUpdates.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "QuilloCore/Updates/SoftwareUpdateError.h"

namespace quillo {
namespace {

// Sets of flags as the service numbers them.
constexpr std::uint64_t noFilter = 1U << 1U;
constexpr std::uint64_t onlyInstalled = 1U << 2U;
constexpr std::uint64_t onlyTrusted = 1U << 1U;
constexpr std::uint64_t onlyDownload = 1U << 3U;

void updatePackages(PackageKitConnection& connection, std::uint64_t flags, const SoftwarePackage& update,
                    UpdateAttendance attendance) {
  connection.run({.method = "UpdatePackages",
                  .argument = flags,
                  .texts = std::vector{update.identifier},
                  .attendance = attendance});
}

}  // namespace

PackageKitUpdates::PackageKitUpdates(Configuration configuration) : configuration_(std::move(configuration)) {}

template <class Work>
auto PackageKitUpdates::converse(Work work) -> Task<std::invoke_result_t<Work&, PackageKitConnection&>> {
  using T = std::invoke_result_t<Work&, PackageKitConnection&>;
  auto result = std::make_shared<PendingResult<T>>();
  auto cancellation = std::make_shared<CancellationEvent>();
  result->whenResolved([cancellation] { cancellation->cancel(); });
  queue_.post([result, cancellation, work = std::move(work), configuration = configuration_]() mutable {
    if (result->isResolved()) return;
    auto conversation = [&] {
      PackageKitConnection connection(configuration.busAddress, configuration.limits, *cancellation);
      return work(connection);
    };
    result->resolve(outcomeOfCall(conversation));
  });
  return waitFor(std::move(result));
}

Task<SoftwarePackage> PackageKitUpdates::installedPackage() {
  return converse([program = configuration_.program](PackageKitConnection& connection) {
    const auto owners =
        connection.run({.method = "SearchFiles", .argument = onlyInstalled, .texts = std::vector{program}});
    if (owners.empty()) throw SoftwareUpdateError(SoftwareUpdateError::NotInstalledFromPackage{program});
    return owners.front();
  });
}

Task<std::optional<SoftwarePackage>> PackageKitUpdates::findUpdate(SoftwarePackage installed,
                                                                   UpdateAttendance attendance) {
  return converse([installed = std::move(installed), attendance](PackageKitConnection& connection) {
    connection.run({.method = "RefreshCache", .argument = false, .texts = {}, .attendance = attendance});
    std::optional<SoftwarePackage> update;
    for (SoftwarePackage& package :
         connection.run({.method = "GetUpdates", .argument = noFilter, .texts = {}, .attendance = attendance})) {
      if (package.name == installed.name && package.architecture == installed.architecture) update = std::move(package);
    }
    return update;
  });
}

Task<> PackageKitUpdates::download(SoftwarePackage update, UpdateAttendance attendance) {
  return converse([update = std::move(update), attendance](PackageKitConnection& connection) {
    updatePackages(connection, onlyTrusted | onlyDownload, update, attendance);
  });
}

Task<> PackageKitUpdates::install(SoftwarePackage update, UpdateAttendance attendance) {
  return converse([update = std::move(update), attendance](PackageKitConnection& connection) {
    updatePackages(connection, onlyTrusted, update, attendance);
  });
}

}  // namespace quillo
