#include "QuilloLinux/Desktop/XdgUserDefaults.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Support/JsonReader.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t currentVersion = 1;
constexpr std::string_view versionKey = "schemaVersion";
constexpr std::string_view valuesKey = "values";

std::map<std::string, std::string, std::less<>> membersOf(const JsonCursor& object) {
  std::map<std::string, std::string, std::less<>> members;
  for (const std::string_view key : object.keys()) members.emplace(key, object.require(key).text());
  return members;
}

std::string textOf(const std::map<std::string, std::string, std::less<>>& values,
                   const std::map<std::string, std::string, std::less<>>& otherMembers) {
  JsonWriter writer(JsonStyle::prettyPrinted);
  writer.beginObject();
  writer.key(versionKey);
  writer.integer(currentVersion);
  writer.key(valuesKey);
  writer.beginObject();
  for (const auto& [key, json] : values) {
    writer.key(key);
    writer.verbatim(json);
  }
  writer.endObject();
  for (const auto& [key, json] : otherMembers) {
    writer.key(key);
    writer.verbatim(json);
  }
  writer.endObject();
  return writer.takeText() + "\n";
}

}  // namespace

UnsupportedPreferencesError::UnsupportedPreferencesError(const fs::path& file, std::int64_t version)
    : description_(fmt::format("The settings in “{}” are of version {}, which this version of Quillo cannot change.",
                               file.native(), version)) {}

fs::path XdgUserDefaults::defaultDirectory() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return fs::path(value == nullptr ? "" : value);
  };
  fs::path configuration = variable("XDG_CONFIG_HOME");
  if (!configuration.is_absolute()) configuration = variable("HOME") / ".config";
  return configuration / "Quillo";
}

std::optional<std::string> XdgUserDefaults::data(std::string_view key) const {
  try {
    Contents contents = read();
    const auto found = contents.values.find(key);
    if (found != contents.values.end()) return std::move(found->second);
  } catch (const std::exception&) {
    // The contract: what cannot be read is absent; `problem` tells why.
  }
  return std::nullopt;
}

void XdgUserDefaults::setData(std::string_view key, std::string_view json) {
  std::string value = JsonDocument::parse(json).root().text();
  change([&](Members& values) { values.insert_or_assign(std::string(key), std::move(value)); });
}

void XdgUserDefaults::remove(std::string_view key) {
  if (!data(key)) return;
  change([&](Members& values) { values.erase(values.find(key)); });
}

std::optional<std::string> XdgUserDefaults::problem() const {
  try {
    read();
    return std::nullopt;
  } catch (const JsonError& error) {
    return fmt::format("The settings in “{}” are damaged: {}", (directory_ / fileName).native(),
                       error.errorDescription());
  } catch (const std::exception& error) {
    return error.what();
  }
}

XdgUserDefaults::Contents XdgUserDefaults::read() const {
  try {
    return parse(fileSystem_.openDirectory(directory_)->readFile(fileName));
  } catch (const FileSystemError& error) {
    if (error.isSystemFailure(ENOENT)) return {};
    throw;
  }
}

XdgUserDefaults::Contents XdgUserDefaults::parse(std::string_view text) const {
  const JsonDocument document = JsonDocument::parse(text);
  const JsonCursor root = document.root();
  const std::int64_t version = root.require(versionKey).integer();
  if (version != currentVersion) throw UnsupportedPreferencesError(directory_ / fileName, version);
  Contents contents{membersOf(root.require(valuesKey)), membersOf(root)};
  for (const std::string_view ours : {versionKey, valuesKey})
    contents.otherMembers.erase(contents.otherMembers.find(ours));
  return contents;
}

void XdgUserDefaults::change(const std::function<void(Members&)>& edit) {
  const std::unique_ptr<Directory> directory = fileSystem_.makeDirectories(directory_);
  const std::string identifier = identifiers_.makeUUID().text();
  Contents contents;
  bool isDamaged = false;
  try {
    contents = read();
  } catch (const JsonError&) {
    isDamaged = true;
  }
  edit(contents.values);
  const std::string text = textOf(contents.values, contents.otherMembers);
  // What is nested too deeply to be read again would look like damage later.
  JsonDocument::parse(text);

  const std::string newName = fmt::format(".{}.{}", fileName, identifier);
  try {
    directory->createFile(newName, text);
    if (isDamaged) {
      const std::string asideName = fmt::format("damaged-{}-{}", identifier, fileName);
      directory->moveWithoutReplacing(fileName, asideName);
      damagedFile_ = directory_ / asideName;
    }
    directory->replaceFile(newName, fileName);
  } catch (const FileSystemError&) {
    // An unfinished file is not left lying about; if it cannot be removed either, it harms nobody.
    try {
      directory->remove(newName);
    } catch (const FileSystemError&) {
    }
    throw;
  }
  directory->sync();
}

}  // namespace quillo
