#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiCacheItem.h"
#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// A record as far as an application's cache tells it.
struct AtspiBulkRecord {
  AtspiNodeRecord record;
  bool areChildrenKnown = false;  ///< whether the children that the cache holds are as many as it announces
};

/// By token.
using AtspiBulkRecords = std::unordered_map<std::uint64_t, AtspiBulkRecord>;

/// The records that a cache's items make. Children are taken over only where they are all there: exactly as many as
/// announced, each at a place of its own.
AtspiBulkRecords makeBulkRecords(std::span<const AtspiCacheItem> items, AtspiObjectTable& objects);

/// Everything that an application's cache holds, in one call; empty when it has none, or does not answer.
AtspiBulkRecords readBulkCache(AtspiBus& bus, const std::string& busName, AtspiObjectTable& objects,
                               const AccessibilityCaptureControl& control);

/// Applications make their caches only while somebody listens to their events. As long as this lives we ask for an
/// event that hardly ever happens, and never read it.
class AtspiEventListening {
 public:
  AtspiEventListening(AtspiBus& bus, const std::string& busName);
  AtspiEventListening(const AtspiEventListening&) = delete;
  AtspiEventListening& operator=(const AtspiEventListening&) = delete;
  ~AtspiEventListening();

 private:
  AtspiBus& bus_;
};

}  // namespace quillo
