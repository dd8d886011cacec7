#pragma once

#include <string>
#include <string_view>

#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// The hidden directory in which a bundle grows until it is complete: ".<artifact>.<attempt>.tmp".
namespace StagingDirectory {

std::string name(const UUID& artifact, const UUID& attempt);
bool isName(std::string_view name);

/// Removes every staging directory of `root` that has not changed for an hour: no process is still writing it. What
/// cannot be read or removed is left.
void removeAbandoned(Directory& root, Date now);

}  // namespace StagingDirectory
}  // namespace quillo
