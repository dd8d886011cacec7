#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Preferences/UserDefaults.h"
#include "QuilloCore/Support/JsonReader.h"

namespace quillo::test {

/// Settings that are gone with the test.
class InMemoryUserDefaults final : public UserDefaults {
 public:
  std::optional<std::string> data(std::string_view key) const override {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }

  void setData(std::string_view key, std::string_view json) override {
    values.insert_or_assign(std::string(key), JsonDocument::parse(json).root().text());
  }

  void remove(std::string_view key) override { values.erase(std::string(key)); }

  /// JSON by key; what a test puts here itself need not be JSON.
  std::map<std::string, std::string, std::less<>> values;
};

}  // namespace quillo::test
