#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The application's actions as accessibility actions: known names translated, noise dropped, each once.
std::vector<std::string> mapActions(const std::vector<std::string>& names);

/// Whether `mapActions` knows what to do with the name. Applications list their actions in the user's language, or as
/// nothing but a key; the name of one that is not known is asked for again, in its untranslated form.
bool isKnownAction(std::string_view name);

}  // namespace quillo
