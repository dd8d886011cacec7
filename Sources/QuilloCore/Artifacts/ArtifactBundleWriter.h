#pragma once

#include <functional>
#include <string>

#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// The bytes of a new bundle's files.
struct ArtifactBundleFiles {
  std::string_view screenshot;  ///< of the draft
  std::string evidence;
  std::string observation;
  std::string manifest;
};

/// Encodes everything before anything is written. The draft must outlive the result.
ArtifactBundleFiles encodeBundle(const ArtifactManifest& manifest, const ContextArtifactDraft& draft);

/// Writes the files into a new directory `staging` of `root`, the manifest last, and gives it the name `bundle` when
/// all of them have reached the disk. Whatever fails, no bundle and no staging directory is left; nor when `checkpoint`
/// throws, which is called before each step.
void writeBundle(Directory& root, const std::string& staging, const std::string& bundle,
                 const ArtifactBundleFiles& files, const std::function<void()>& checkpoint);

/// Puts a new manifest in the place of the bundle's, in one step. Removes what earlier attempts, cut off more than an
/// hour ago, have left.
void replaceManifest(Directory& bundle, const ArtifactManifest& manifest, const UUID& attempt, Date now);

}  // namespace quillo
