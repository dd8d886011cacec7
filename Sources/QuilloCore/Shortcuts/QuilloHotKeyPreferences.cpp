#include "QuilloCore/Shortcuts/QuilloHotKeyPreferences.h"

#include <cstdint>
#include <string_view>
#include <tuple>

#include "QuilloCore/Support/JsonReader.h"

namespace quillo {
namespace {

constexpr std::string_view key = "hotKeyConfiguration";
constexpr std::int64_t currentVersion = 1;

struct Envelope {
  std::int64_t version = currentVersion;
  QuilloHotKeyConfiguration configuration;
};

}  // namespace

template <>
struct JsonFields<Envelope> {
  static constexpr auto table =
      std::tuple{jsonField("version", &Envelope::version), jsonField("configuration", &Envelope::configuration)};
};

QuilloHotKeyConfiguration QuilloHotKeyPreferences::load(const UserDefaults& defaults) {
  if (const auto stored = defaults.data(key)) {
    try {
      const auto envelope = decodeJson<Envelope>(*stored);
      const bool isUsable = envelope.version == currentVersion && !envelope.configuration.validationMessage();
      if (isUsable) return envelope.configuration;
    } catch (const JsonError&) {
      // As good as nothing: the user has working shortcuts and can record others.
    }
  }
  return QuilloHotKeyConfiguration::defaults();
}

void QuilloHotKeyPreferences::save(const QuilloHotKeyConfiguration& configuration, UserDefaults& defaults) {
  defaults.setData(key, encodeJson(Envelope{currentVersion, configuration}, JsonStyle::compact));
}

}  // namespace quillo
