#pragma once

#include <stdexcept>
#include <string>

#include "QuilloCore/Preferences/LoginItem.h"

namespace quillo::test {

class FakeLoginItem final : public LoginItem {
 public:
  bool isEnabled() const override { return enabled; }
  void setEnabled(bool isEnabled) override {
    if (!refusal.empty()) throw std::runtime_error(refusal);
    enabled = isEnabled;
  }

  bool enabled = false;
  std::string refusal;  ///< why it cannot be changed; empty when it can
};

}  // namespace quillo::test
