#pragma once

#include "QuilloApp/Model/QuilloModelServices.h"

namespace quillo {

/// The desktop's file manager, asked over the session's bus; without one the folder is opened in whatever opens it.
class FileManager final : public ArtifactRevealing {
 public:
  void reveal(const std::filesystem::path& bundlePath) override;
};

}  // namespace quillo
