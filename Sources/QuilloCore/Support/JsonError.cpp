#include "QuilloCore/Support/JsonError.h"

#include <fmt/format.h>

#include <cstdint>
#include <string_view>

#include "QuilloCore/Support/GraphemeClusters.h"

namespace quillo {
namespace {

struct Describe {
  std::string operator()(const JsonError::Malformed& e) const {
    return fmt::format("The JSON is malformed at byte {}: {}", e.offset, e.reason);
  }
  std::string operator()(const JsonError::NotUtf8& e) const {
    return fmt::format("The JSON is not UTF-8 at byte {}.", e.offset);
  }
  std::string operator()(const JsonError::TooDeep& e) const {
    return fmt::format("The JSON is nested deeper than {} levels at byte {}.", e.limit, e.offset);
  }
  std::string operator()(const JsonError::MissingMember& e) const {
    return fmt::format("The member \"{}\" is missing at {}.", e.key, e.path);
  }
  std::string operator()(const JsonError::WrongType& e) const {
    return fmt::format("Expected {} at {}, found {}.", e.expected, e.path, e.found);
  }
  std::string operator()(const JsonError::UnknownName& e) const {
    constexpr std::int64_t longestName = 80;
    const std::string_view beginning = graphemeClusterPrefix(e.name, longestName);
    return fmt::format("\"{}{}\" is not a known value at {}.", beginning, beginning.size() < e.name.size() ? "…" : "",
                       e.path);
  }
  std::string operator()(const JsonError::InvalidValue& e) const {
    return fmt::format("The value at {} cannot be used: {}", e.path, e.reason);
  }
  std::string operator()(const JsonError::NotFinite& /*unused*/) const {
    return "A number that is not finite cannot be written as JSON.";
  }
};

}  // namespace

JsonError::JsonError(Case value) : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

}  // namespace quillo
