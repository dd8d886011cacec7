#include "Tests/Support/JsonCorruption.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace quillo::test {
namespace {

struct Span {
  std::size_t begin;
  std::size_t end;
};

/// Where the values and the keys of a JSON text stand. Recursive: for the small texts of tests.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {
    value();
    blanks();
    if (position_ != text_.size()) fail();
  }

  std::vector<Span> values;
  std::vector<Span> keys;
  std::vector<Span> elements;

 private:
  [[noreturn]] void fail() const { throw std::invalid_argument("no JSON at " + std::to_string(position_)); }

  char peek() const {
    if (position_ == text_.size()) fail();
    return text_[position_];
  }

  void blanks() {
    while (position_ < text_.size() && (text_[position_] == ' ' || text_[position_] == '\n')) ++position_;
  }

  Span string() {
    const std::size_t begin = position_;
    for (++position_; peek() != '"'; ++position_) {
      if (peek() == '\\') ++position_;
    }
    ++position_;
    return {begin, position_};
  }

  Span value() {
    blanks();
    const std::size_t begin = position_;
    const char first = peek();
    if (first == '"') {
      string();
    } else if (first == '{' || first == '[') {
      members(first == '{');
    } else {
      while (position_ < text_.size() && std::string_view(",]} \n").find(text_[position_]) == std::string_view::npos)
        ++position_;
    }
    values.push_back({begin, position_});
    return values.back();
  }

  void members(bool isObject) {
    ++position_;
    for (blanks(); peek() != '}' && peek() != ']'; blanks()) {
      if (isObject) {
        keys.push_back(string());
        blanks();
        if (peek() != ':') fail();
        ++position_;
        value();
      } else {
        elements.push_back(value());
      }
      blanks();
      if (peek() == ',') ++position_;
    }
    ++position_;
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

std::vector<CorruptedJson> singleFieldCorruptions(std::string_view json) {
  const Scanner scanner(json);
  std::vector<CorruptedJson> result;
  const auto replace = [&](Span span, std::string_view replacement, std::string_view what) {
    std::string text(json.substr(0, span.begin));
    text += replacement;
    text += json.substr(span.end);
    std::string label = std::to_string(span.begin);
    label.append(": ").append(json.substr(span.begin, std::min<std::size_t>(span.end - span.begin, 40))).append(what);
    result.push_back({std::move(label), std::move(text)});
  };
  for (const Span span : scanner.values) {
    replace(span, "null", " became null");
    replace(span, json[span.begin] == '"' ? "-7" : "\"x\"", " changed its type");
    replace(span, json[span.begin] == '{' ? "[]" : "{}", " became empty");
  }
  for (const Span span : scanner.keys) replace(span, "\"no such key\"", " renamed");
  for (const Span span : scanner.elements) {
    const std::string_view element = json.substr(span.begin, span.end - span.begin);
    replace(span, std::string(element).append(",").append(element), " doubled");
  }
  return result;
}

}  // namespace quillo::test
