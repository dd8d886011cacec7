#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillo {

/// Where an accessible object lives: a connection of the accessibility bus and a path there.
struct AtspiObject {
  std::string busName;
  std::string path;

  /// Toolkits answer "no object" with an empty or a null path.
  bool isNull() const { return busName.empty() || path.empty() || path == "/org/a11y/atspi/null"; }

  friend bool operator==(const AtspiObject&, const AtspiObject&) = default;
};

struct AtspiObjectHash {
  std::size_t operator()(const AtspiObject& object) const {
    return std::hash<std::string_view>{}(object.path) * 31 + std::hash<std::string_view>{}(object.busName);
  }
};

/// Gives every object one number, for as long as the table lives.
class AtspiObjectTable {
 public:
  std::uint64_t tokenOf(const AtspiObject& object) {
    const auto [entry, isNew] = tokens_.try_emplace(object, objects_.size());
    if (isNew) objects_.push_back(&entry->first);
    return entry->second;
  }

  const AtspiObject& operator[](std::uint64_t token) const { return *objects_[token]; }
  std::size_t size() const { return objects_.size(); }

 private:
  std::unordered_map<AtspiObject, std::uint64_t, AtspiObjectHash> tokens_;
  std::vector<const AtspiObject*> objects_;  // the keys of an unordered_map stay where they are
};

}  // namespace quillo
