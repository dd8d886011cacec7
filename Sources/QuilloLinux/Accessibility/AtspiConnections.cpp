#include "QuilloLinux/Accessibility/AtspiConnections.h"

#include <utility>

#include "QuilloCore/Support/Clocks.h"

namespace quillo {

AtspiStatus AtspiConnections::status() {
  const std::scoped_lock lock(mutex_);
  return sessionBus_.readStatus();
}

bool AtspiConnections::enable() {
  const std::scoped_lock lock(mutex_);
  return sessionBus_.enable();
}

std::unique_ptr<AtspiBus> AtspiConnections::borrow() {
  const std::scoped_lock lock(mutex_);
  if (auto bus = std::exchange(idle_, nullptr); bus && bus->isUsable()) return bus;
  found_.reset();
  const std::string address = sessionBus_.readAddress();
  return address.empty() ? nullptr : AtspiBus::connect(address);
}

void AtspiConnections::giveBack(std::unique_ptr<AtspiBus> bus) {
  const std::scoped_lock lock(mutex_);
  if (!bus || idle_ || !bus->isUsable()) return;
  bus->beginAnew();
  idle_ = std::move(bus);
}

std::optional<std::vector<AtspiObject>> AtspiConnections::recentRoots(std::int32_t processIdentifier) {
  constexpr std::uint64_t lifetimeNanoseconds = 2'000'000'000;
  const std::scoped_lock lock(mutex_);
  if (!found_ || found_->processIdentifier != processIdentifier) return std::nullopt;
  if (systemUptimeNanoseconds() - found_->uptimeNanoseconds > lifetimeNanoseconds) return std::nullopt;
  return found_->roots;
}

void AtspiConnections::rememberRoots(std::int32_t processIdentifier, std::vector<AtspiObject> roots) {
  const std::scoped_lock lock(mutex_);
  found_ = {processIdentifier, std::move(roots), systemUptimeNanoseconds()};
}

}  // namespace quillo
