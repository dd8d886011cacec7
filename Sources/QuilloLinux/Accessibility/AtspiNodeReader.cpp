#include "QuilloLinux/Accessibility/AtspiNodeReader.h"

#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace quillo {

AtspiNodeReader::AtspiNodeReader(AtspiBus& bus, AtspiObjectTable& objects, const AccessibilityCaptureControl& control)
    : control_(control), context_{bus, objects, [this](std::uint64_t token, AtspiNodeRecord record) {
                                    records_.insert_or_assign(token, std::move(record));
                                    if (onRead_) onRead_(token);
                                  }} {}

void AtspiNodeReader::start(std::uint64_t token) {
  const auto reading = std::make_shared<AtspiNodeReading>(context_, token);
  auto known = bulk_.extract(token);
  reading->start(known.empty() ? std::nullopt : std::optional(std::move(known.mapped())));
}

const AtspiNodeRecord* AtspiNodeReader::knownRecord(std::uint64_t token) const {
  const auto found = records_.find(token);
  return found == records_.end() ? nullptr : &found->second;
}

const AtspiNodeRecord& AtspiNodeReader::record(std::uint64_t token) {
  read(std::span(&token, 1));
  if (const AtspiNodeRecord* known = knownRecord(token)) return *known;
  static const AtspiNodeRecord stopped = [] {
    AtspiNodeRecord record;
    record.error = AccessibilityErrorCode::cannotComplete;
    return record;
  }();
  return stopped;
}

void AtspiNodeReader::read(std::span<const std::uint64_t> tokens) {
  std::size_t next = 0;
  context_.bus.drain(control_, [&] {
    while (next < tokens.size() && records_.contains(tokens[next])) ++next;
    if (next == tokens.size()) return false;
    start(tokens[next++]);
    return true;
  });
}

bool AtspiNodeReader::isHidden(const AtspiNodeRecord& record) const {
  return record.error == AccessibilityErrorCode::success && context_.toolkit != AtspiToolkit::gtk4 &&
         !record.is(AtspiState::visible);
}

bool AtspiNodeReader::isWorthFollowing(const AtspiNodeRecord& record) const {
  // Below a password field stand the pieces of its text.
  return record.role != AtspiRole::passwordText && !isHidden(record);
}

void AtspiNodeReader::readTree(std::uint64_t root, std::size_t maximumCount) {
  std::deque<std::uint64_t> pending = {root};
  std::unordered_map<std::uint64_t, bool> isSeen = {{root, true}};
  const auto follow = [&](std::uint64_t token) {
    if (!isWorthFollowing(records_.at(token))) return;
    for (const std::uint64_t child : records_.at(token).children) {
      if (isSeen.size() >= maximumCount) return;
      if (isSeen.try_emplace(child, true).second) pending.push_back(child);
    }
  };
  onRead_ = follow;
  context_.bus.drain(control_, [&] {
    while (!pending.empty()) {
      const std::uint64_t token = pending.front();
      pending.pop_front();
      if (records_.contains(token)) {
        follow(token);
        continue;
      }
      start(token);
      return true;
    }
    return false;
  });
  onRead_ = nullptr;
}

}  // namespace quillo
