#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

/// Where a capture came from.
struct ArtifactSource {
  std::string applicationName;
  std::optional<std::string> bundleIdentifier;
  std::string windowTitle;  ///< may be empty
  std::optional<ArtifactRect> windowFrame;

  friend bool operator==(const ArtifactSource&, const ArtifactSource&) = default;
};

template <>
struct JsonFields<ArtifactSource> {
  using R = ArtifactSource;
  static constexpr auto table =
      std::tuple{jsonField("applicationName", &R::applicationName), jsonField("bundleIdentifier", &R::bundleIdentifier),
                 jsonField("windowTitle", &R::windowTitle), jsonField("windowFrame", &R::windowFrame)};
};

}  // namespace quillo
