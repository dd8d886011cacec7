#include "QuilloCore/Preferences/UserDefaults.h"

#include "QuilloCore/Support/JsonReader.h"

namespace quillo {
namespace {

template <class T>
std::optional<T> decoded(const std::optional<std::string>& json) {
  if (!json) return std::nullopt;
  try {
    return decodeJson<T>(*json);
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
  return decoded<std::int64_t>(data(key));
}

void UserDefaults::setInteger(std::string_view key, std::int64_t value) {
  setData(key, encodeJson(value, JsonStyle::compact));
}

std::optional<std::string> UserDefaults::string(std::string_view key) const {
  return decoded<std::string>(data(key));
}

void UserDefaults::setString(std::string_view key, std::string_view value) {
  setData(key, encodeJson(value, JsonStyle::compact));
}

}  // namespace quillo
