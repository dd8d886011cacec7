#include "QuilloCore/Artifacts/FileSystemError.h"

#include <fmt/format.h>

#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillo {
namespace {

// In the order of the enumerators.
constexpr std::array<std::string_view, 8> verbs = {"open", "list", "read", "make", "write", "sync", "move", "remove"};

struct Describe {
  std::string operator()(const FileSystemError::SystemFailure& e) const {
    return fmt::format("Could not {} \"{}\": {}", verbs[static_cast<std::size_t>(e.operation)], e.path.string(),
                       std::generic_category().message(e.errorNumber));
  }
  std::string operator()(const FileSystemError::NotARegularFile& e) const {
    return fmt::format("Could not read \"{}\": it is not a regular file", e.path.string());
  }
  std::string operator()(const FileSystemError::NotADirectory& e) const {
    return fmt::format("Could not open \"{}\": it is not a directory", e.path.string());
  }
  std::string operator()(const FileSystemError::TooLarge& e) const {
    return fmt::format("Could not read \"{}\": it is larger than {} bytes", e.path.string(), e.limit);
  }
};

}  // namespace

FileSystemError::FileSystemError(Case value) : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

bool FileSystemError::isSystemFailure(int errorNumber) const {
  const auto* failure = std::get_if<SystemFailure>(&value_);
  return failure != nullptr && failure->errorNumber == errorNumber;
}

}  // namespace quillo
