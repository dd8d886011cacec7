#include "Tests/Support/JsonCorruption.h"

#include <algorithm>
#include <cstddef>
#include <regex>

namespace quillo::test {
namespace {

struct Span {
  std::size_t begin;
  std::size_t end;
};

/// Where the values, the keys and the arrays' elements of a valid JSON text stand. For the small texts of tests.
struct Places {
  explicit Places(const std::string& text) {
    static const std::regex token(R"("(?:\\.|[^"\\])*"|[\[\]{}:]|[^\[\]{}:,\s"]+)");
    std::vector<std::size_t> open;
    const auto add = [&](Span value) {
      values.push_back(value);
      if (!open.empty() && text[open.back()] == '[') elements.push_back(value);
    };
    for (std::sregex_iterator found(text.begin(), text.end(), token), end; found != end; ++found) {
      const auto begin = static_cast<std::size_t>(found->position());
      const Span span{begin, begin + static_cast<std::size_t>(found->length())};
      const char first = text[begin];
      if (first == '{' || first == '[') {
        open.push_back(begin);
      } else if (first == '}' || first == ']') {
        const std::size_t opened = open.back();
        open.pop_back();
        add({opened, span.end});
      } else if (first == ':') {
        keys.push_back(values.back());  // what stood before it
        values.pop_back();
      } else {
        add(span);
      }
    }
  }

  std::vector<Span> values;
  std::vector<Span> keys;
  std::vector<Span> elements;
};

}  // namespace

std::vector<CorruptedJson> singleFieldCorruptions(std::string_view json) {
  const Places places{std::string(json)};
  std::vector<CorruptedJson> result;
  const auto replace = [&](Span span, std::string_view replacement, std::string_view what) {
    std::string text(json.substr(0, span.begin));
    text += replacement;
    text += json.substr(span.end);
    std::string label = std::to_string(span.begin);
    label.append(": ").append(json.substr(span.begin, std::min<std::size_t>(span.end - span.begin, 40))).append(what);
    result.push_back({std::move(label), std::move(text)});
  };
  for (const Span span : places.values) {
    replace(span, "null", " became null");
    replace(span, json[span.begin] == '"' ? "-7" : "\"x\"", " changed its type");
    replace(span, json[span.begin] == '{' ? "[]" : "{}", " became empty");
  }
  for (const Span span : places.keys) replace(span, "\"no such key\"", " renamed");
  for (const Span span : places.elements) {
    const std::string_view element = json.substr(span.begin, span.end - span.begin);
    replace(span, std::string(element).append(",").append(element), " doubled");
  }
  return result;
}

}  // namespace quillo::test
