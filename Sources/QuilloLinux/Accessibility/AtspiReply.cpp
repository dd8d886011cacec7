#include "QuilloLinux/Accessibility/AtspiReply.h"

#include <systemd/sd-bus.h>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloLinux/Accessibility/AtspiErrors.h"

namespace quillo {
namespace {

std::string checkedText(const char* text) {
  return text == nullptr ? std::string() : replacingInvalidUtf8(text);
}

std::optional<AtspiObject> readObject(sd_bus_message* message) {
  const char* busName = nullptr;
  const char* path = nullptr;
  if (sd_bus_message_read(message, "(so)", &busName, &path) <= 0) return std::nullopt;
  return AtspiObject{busName, path};
}

}  // namespace

AtspiReply::AtspiReply(sd_bus_message* message) : message_(message) {
  if (const sd_bus_error* error = sd_bus_message_get_error(message)) {
    error_ = accessibilityErrorOf(error->name);
    message_ = nullptr;
  }
}

bool AtspiReply::enterVariant(const char* contents) const {
  char type = 0;
  const char* signature = nullptr;
  if (sd_bus_message_peek_type(message_, &type, &signature) <= 0) return false;
  return type != SD_BUS_TYPE_VARIANT || sd_bus_message_enter_container(message_, SD_BUS_TYPE_VARIANT, contents) > 0;
}

template <class T>
std::optional<T> AtspiReply::basic(char type) const {
  const char contents[] = {type, '\0'};
  T value{};
  if (message_ == nullptr || !enterVariant(contents)) return std::nullopt;
  if (sd_bus_message_read_basic(message_, type, &value) <= 0) return std::nullopt;
  return value;
}

std::optional<std::string> AtspiReply::text() const {
  const auto text = basic<const char*>(SD_BUS_TYPE_STRING);
  return text ? std::optional(checkedText(*text)) : std::nullopt;
}

std::optional<std::int32_t> AtspiReply::int32() const {
  return basic<std::int32_t>(SD_BUS_TYPE_INT32);
}
std::optional<std::uint32_t> AtspiReply::uint32() const {
  return basic<std::uint32_t>(SD_BUS_TYPE_UINT32);
}
std::optional<double> AtspiReply::number() const {
  return basic<double>(SD_BUS_TYPE_DOUBLE);
}

std::optional<bool> AtspiReply::boolean() const {
  const auto value = basic<int>(SD_BUS_TYPE_BOOLEAN);
  return value ? std::optional(*value != 0) : std::nullopt;
}

std::optional<AtspiObject> AtspiReply::object() const {
  if (message_ == nullptr || !enterVariant("(so)")) return std::nullopt;
  return readObject(message_);
}

std::optional<std::vector<AtspiObject>> AtspiReply::objects() const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "(so)") <= 0) {
    return std::nullopt;
  }
  std::vector<AtspiObject> objects;
  while (auto object = readObject(message_)) objects.push_back(std::move(*object));
  return objects;
}

std::optional<std::vector<std::string>> AtspiReply::texts() const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "s") <= 0) {
    return std::nullopt;
  }
  std::vector<std::string> texts;
  const char* text = nullptr;
  while (sd_bus_message_read_basic(message_, SD_BUS_TYPE_STRING, &text) > 0) texts.push_back(checkedText(text));
  return texts;
}

std::optional<std::uint64_t> AtspiReply::states() const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "u") <= 0) {
    return std::nullopt;
  }
  std::uint64_t bits = 0;
  std::uint32_t word = 0;
  for (unsigned shift = 0; sd_bus_message_read_basic(message_, SD_BUS_TYPE_UINT32, &word) > 0; shift += 32) {
    if (shift < 64) bits |= static_cast<std::uint64_t>(word) << shift;
  }
  return bits;
}

std::optional<std::vector<std::pair<std::string, std::string>>> AtspiReply::attributes() const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "{ss}") <= 0) {
    return std::nullopt;
  }
  std::vector<std::pair<std::string, std::string>> attributes;
  const char* key = nullptr;
  const char* value = nullptr;
  while (sd_bus_message_read(message_, "{ss}", &key, &value) > 0) {
    attributes.emplace_back(checkedText(key), checkedText(value));
  }
  return attributes;
}

std::optional<ArtifactRect> AtspiReply::extents() const {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (message_ == nullptr || sd_bus_message_read(message_, "(iiii)", &x, &y, &width, &height) <= 0) return std::nullopt;
  return ArtifactRect{.x = static_cast<double>(x),
                      .y = static_cast<double>(y),
                      .width = static_cast<double>(width),
                      .height = static_cast<double>(height)};
}

std::optional<std::vector<std::string>> AtspiReply::actionNames() const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "(sss)") <= 0) {
    return std::nullopt;
  }
  std::vector<std::string> names;
  const char* name = nullptr;
  const char* description = nullptr;
  const char* keyBinding = nullptr;
  while (sd_bus_message_read(message_, "(sss)", &name, &description, &keyBinding) > 0) {
    names.push_back(checkedText(name));
  }
  return names;
}

std::optional<std::vector<AtspiObject>> AtspiReply::relationTargets(std::uint32_t relation) const {
  if (message_ == nullptr || sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, "(ua(so))") <= 0) {
    return std::nullopt;
  }
  std::vector<AtspiObject> targets;
  while (sd_bus_message_enter_container(message_, SD_BUS_TYPE_STRUCT, "ua(so)") > 0) {
    std::uint32_t kind = 0;
    sd_bus_message_read_basic(message_, SD_BUS_TYPE_UINT32, &kind);
    auto members = objects();
    sd_bus_message_exit_container(message_);
    sd_bus_message_exit_container(message_);
    // A toolkit that names several labels, each in a relation of its own, begins with the nearest.
    if (kind == relation && members && targets.empty()) targets = std::move(*members);
  }
  return targets;
}

std::optional<AtspiCacheItem> AtspiReply::cacheItem(bool namesChildren) const {
  AtspiCacheItem item;
  auto object = readObject(message_);
  const auto application = readObject(message_);
  auto parent = readObject(message_);
  if (!object || !application || !parent) return std::nullopt;
  item.object = std::move(*object);
  item.parent = std::move(*parent);
  if (namesChildren) {
    item.children = objects();
    if (!item.children || sd_bus_message_exit_container(message_) < 0) return std::nullopt;
  } else if (sd_bus_message_read(message_, "ii", &item.index, &item.childCount) <= 0) {
    return std::nullopt;
  }
  auto interfaces = texts();
  if (!interfaces || sd_bus_message_exit_container(message_) < 0) return std::nullopt;
  item.interfaces = std::move(*interfaces);
  const char* name = nullptr;
  const char* description = nullptr;
  if (sd_bus_message_read(message_, "sus", &name, &item.role, &description) <= 0) return std::nullopt;
  item.name = checkedText(name);
  item.description = checkedText(description);
  const auto set = states();
  if (!set || sd_bus_message_exit_container(message_) < 0) return std::nullopt;
  item.states = *set;
  return item;
}

std::optional<std::vector<AtspiCacheItem>> AtspiReply::cacheItems(std::size_t maximumCount) const {
  if (message_ == nullptr) return std::nullopt;
  constexpr const char* countingForm = "((so)(so)(so)iiassusau)";
  constexpr const char* namingForm = "((so)(so)(so)a(so)assusau)";
  const bool namesChildren = sd_bus_message_has_signature(message_, "a((so)(so)(so)a(so)assusau)") > 0;
  const char* form = namesChildren ? namingForm : countingForm;
  if (sd_bus_message_enter_container(message_, SD_BUS_TYPE_ARRAY, form) <= 0) return std::nullopt;
  const std::string members(form + 1, std::char_traits<char>::length(form) - 2);
  std::vector<AtspiCacheItem> items;
  while (sd_bus_message_enter_container(message_, SD_BUS_TYPE_STRUCT, members.c_str()) > 0) {
    auto item = cacheItem(namesChildren);
    if (!item || items.size() == maximumCount) return std::nullopt;
    items.push_back(std::move(*item));
    sd_bus_message_exit_container(message_);
  }
  return items;
}

}  // namespace quillo
