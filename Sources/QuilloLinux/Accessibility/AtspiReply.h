#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/AccessibilityErrorCode.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloLinux/Accessibility/AtspiCacheItem.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

struct sd_bus_message;

namespace quillo {

/// The answer to one call: an error, or values that are read in their order. Every reading gives nothing when the
/// answer is an error or does not hold that type there; texts are made well-formed UTF-8. A property's answer is a
/// variant, which every reading looks into.
class AtspiReply {
 public:
  explicit AtspiReply(sd_bus_message* message);
  explicit AtspiReply(AccessibilityErrorCode error) : error_(error) {}

  /// `success` when there is an answer.
  AccessibilityErrorCode error() const { return error_; }
  bool isError() const { return error_ != AccessibilityErrorCode::success; }

  std::optional<std::string> text() const;
  std::optional<std::int32_t> int32() const;
  std::optional<std::uint32_t> uint32() const;
  std::optional<double> number() const;
  std::optional<bool> boolean() const;
  std::optional<AtspiObject> object() const;
  std::optional<std::vector<AtspiObject>> objects() const;
  std::optional<std::vector<std::string>> texts() const;
  /// The state set, bit n for state n.
  std::optional<std::uint64_t> states() const;
  std::optional<std::vector<std::pair<std::string, std::string>>> attributes() const;
  std::optional<ArtifactRect> extents() const;
  /// The names of a list of actions (name, description, key binding).
  std::optional<std::vector<std::string>> actionNames() const;
  /// The objects of the relation of that kind.
  std::optional<std::vector<AtspiObject>> relationTargets(std::uint32_t relation) const;

  /// The items of an application's cache; nothing when there are more than `maximumCount`.
  std::optional<std::vector<AtspiCacheItem>> cacheItems(std::size_t maximumCount) const;

 private:
  std::optional<AtspiCacheItem> cacheItem(bool namesChildren) const;
  bool enterVariant(const char* contents) const;
  template <class T>
  std::optional<T> basic(char type) const;

  sd_bus_message* message_ = nullptr;  // borrowed
  AccessibilityErrorCode error_ = AccessibilityErrorCode::success;
};

}  // namespace quillo
