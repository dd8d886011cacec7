#include "QuilloLinux/Accessibility/AtspiBulkCache.h"

#include <utility>
#include <vector>

namespace quillo {
namespace {

constexpr const char* registryInterface = "org.a11y.atspi.Registry";
constexpr const char* rareEvent = "window:shade";

/// No application's cache that is of use is larger.
constexpr std::size_t maximumItemCount = 200'000;

AtspiObject registry() {
  return {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"};
}

/// The children of one object, as its items place them.
struct PlacedChildren {
  std::vector<std::uint64_t> tokens;  // by index
  std::size_t count = 0;
};

constexpr std::uint64_t nobody = ~std::uint64_t{0};

std::unordered_map<std::uint64_t, PlacedChildren> placeChildren(std::span<const AtspiCacheItem> items,
                                                                AtspiObjectTable& objects) {
  std::unordered_map<std::uint64_t, PlacedChildren> placed;
  for (const AtspiCacheItem& item : items) {
    if (item.children || item.parent.isNull() || item.index < 0 || std::cmp_greater(item.index, items.size())) continue;
    PlacedChildren& siblings = placed[objects.tokenOf(item.parent)];
    const auto place = static_cast<std::size_t>(item.index);
    if (siblings.tokens.size() <= place) siblings.tokens.resize(place + 1, nobody);
    if (siblings.tokens[place] == nobody) ++siblings.count;
    siblings.tokens[place] = objects.tokenOf(item.object);
  }
  return placed;
}

}  // namespace

AtspiBulkRecords makeBulkRecords(std::span<const AtspiCacheItem> items, AtspiObjectTable& objects) {
  auto placed = placeChildren(items, objects);
  AtspiBulkRecords records;
  records.reserve(items.size());
  for (const AtspiCacheItem& item : items) {
    const std::uint64_t token = objects.tokenOf(item.object);
    AtspiBulkRecord& bulk = records[token];
    bulk.record.role = static_cast<AtspiRole>(item.role);
    bulk.record.states = item.states;
    bulk.record.name = item.name;
    bulk.record.description = item.description;
    bulk.record.interfaces = item.interfaces;
    bulk.record.children.clear();
    if (item.children) {
      bulk.areChildrenKnown = true;
      for (const AtspiObject& child : *item.children) {
        if (!child.isNull()) bulk.record.children.push_back(objects.tokenOf(child));
      }
      continue;
    }
    PlacedChildren& children = placed[token];
    bulk.areChildrenKnown = std::cmp_equal(children.count, item.childCount) && children.count == children.tokens.size();
    if (bulk.areChildrenKnown) bulk.record.children = children.tokens;
  }
  return records;
}

AtspiBulkRecords readBulkCache(AtspiBus& bus, const std::string& busName, AtspiObjectTable& objects,
                               const AccessibilityCaptureControl& control) {
  AtspiBulkRecords records;
  bus.call({{busName, "/org/a11y/atspi/cache"},
            "org.a11y.atspi.Cache",
            "GetItems",
            {},
            [&](const AtspiReply& reply) {
              if (const auto items = reply.cacheItems(maximumItemCount)) records = makeBulkRecords(*items, objects);
            }},
           control);
  return records;
}

AtspiEventListening::AtspiEventListening(AtspiBus& bus, const std::string& busName) : bus_(bus) {
  bus_.tell({registry(), registryInterface, "RegisterEvent", AtspiEventRequest{rareEvent, busName}, {}});
}

AtspiEventListening::~AtspiEventListening() {
  bus_.tell({registry(), registryInterface, "DeregisterEvent", std::string(rareEvent), {}});
}

}  // namespace quillo
