#include "QuilloCore/Artifacts/ArtifactFileError.h"

#include <fmt/format.h>

#include <utility>

namespace quillo {

ArtifactFileError::ArtifactFileError(std::filesystem::path path, Reason reason)
    : path_(std::move(path)),
      reason_(std::move(reason)),
      description_(fmt::format("The file \"{}\" is damaged: {}", path_.string(),
                               std::visit([](const auto& error) { return error.errorDescription(); }, reason_))) {}

}  // namespace quillo
