#include "QuilloLinux/Accessibility/AtspiNames.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

/// A type's name in place of a missing one: one word of letters with several capitals ("GtkEntry", "EditorPage").
bool looksLikeClassName(std::string_view name) {
  const auto isLetter = [](unsigned char c) { return std::isalnum(c) != 0; };
  const auto isCapital = [](unsigned char c) { return std::isupper(c) != 0; };
  return !name.empty() && isCapital(static_cast<unsigned char>(name.front())) && std::ranges::all_of(name, isLetter) &&
         std::ranges::count_if(name, isCapital) >= 2;
}

/// Whether the toolkit made up the name.
bool isOfToolkit(const AtspiNodeRecord& record, AtspiToolkit toolkit) {
  if (toolkit != AtspiToolkit::gtk4) return false;
  // The toolkit's own names for every tab; the words that one reads stand inside.
  if (record.role == AtspiRole::pageTab && record.name == "Tab") return true;
  if (record.role == AtspiRole::pageTabList && record.name == "Tab list") return true;
  if (!looksLikeClassName(record.name)) return false;
  // What one presses or reads may well be named so; a container or a field hardly.
  const bool isNamedByPeople = record.role == AtspiRole::label || record.role == AtspiRole::pushButton ||
                               record.role == AtspiRole::frame || record.role == AtspiRole::link;
  return record.name.starts_with("Gtk") || !isNamedByPeople;
}

/// "A1", "AB12": where a cell stands.
bool isCoordinates(std::string_view name) {
  const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto digits = std::ranges::find_if_not(name, isCapital);
  return digits != name.begin() && digits != name.end() && std::all_of(digits, name.end(), isDigit);
}

bool isEntry(AtspiRole role) {
  return role == AtspiRole::entry || role == AtspiRole::text || role == AtspiRole::autocomplete ||
         role == AtspiRole::passwordText || role == AtspiRole::spinButton || role == AtspiRole::terminal;
}

}  // namespace

AtspiNames accessibleNames(const AtspiNodeRecord& record, AtspiToolkit toolkit) {
  AtspiNames names{.title = record.name, .description = record.description, .help = {}, .placeholder = {}};
  const bool repeatsOwnText = isEntry(record.role) && record.text &&
                              collapsingWhiteSpace(record.name) == collapsingWhiteSpace(record.text->text.text);
  const bool isPlace = holdsParagraphs(record) && isCoordinates(record.name);
  const bool isChoice = isNamedByItsChoice(record, toolkit);
  if (isOfToolkit(record, toolkit) || repeatsOwnText || isPlace || isChoice) names.title.clear();

  for (const std::string_view key : {"placeholder-text", "placeholder"}) {
    if (const std::string* placeholder = record.attribute(key); placeholder != nullptr && names.placeholder.empty()) {
      names.placeholder = *placeholder;
    }
  }
  const std::string* from = record.attribute("description-from");
  if (from != nullptr && *from == "tooltip") {
    names.help = std::move(names.description);
    names.description.clear();
  } else if (toolkit == AtspiToolkit::qt && isEntry(record.role) && names.placeholder.empty()) {
    names.placeholder = std::move(names.description);
    names.description.clear();
  }
  if (names.description == names.title) names.description.clear();
  if (names.placeholder == names.title) names.placeholder.clear();
  return names;
}

bool isNamedByItsChoice(const AtspiNodeRecord& record, AtspiToolkit toolkit) {
  return toolkit == AtspiToolkit::qt && record.role == AtspiRole::comboBox;
}

bool holdsParagraphs(const AtspiNodeRecord& record) {
  return isTableCell(record.role) && !record.children.empty();
}

bool hasOwnText(const AtspiNodeRecord& record) {
  if (!record.text) return false;
  std::string_view rest = trimmingWhiteSpace(record.text->text.text);
  constexpr std::string_view embeddedObject = "\uFFFC";
  while (rest.starts_with(embeddedObject)) {
    rest.remove_prefix(embeddedObject.size());
    rest = trimmingWhiteSpace(rest);
  }
  return !rest.empty();
}

}  // namespace quillo
