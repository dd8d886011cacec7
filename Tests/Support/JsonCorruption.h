#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillo::test {

struct CorruptedJson {
  std::string label;  ///< "12: \"sha256\" renamed"
  std::string text;
};

/// Every way to damage one place of a well-formed JSON text that leaves it well-formed: each value (scalar, array or
/// object) replaced by null, by a value of another type and by an empty one, each member's key renamed, each element of
/// an array doubled.
std::vector<CorruptedJson> singleFieldCorruptions(std::string_view json);

}  // namespace quillo::test
