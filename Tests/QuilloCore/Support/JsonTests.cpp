#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <variant>
#include <vector>

#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonErrorLocation.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo::test {

enum class Colour : std::uint8_t { red, lightBlue };

struct Leaf {
  std::string text;
  std::optional<ArtifactPoint> point;
  friend bool operator==(const Leaf&, const Leaf&) = default;
};

struct Everything {
  std::int64_t wide = 0;
  std::int32_t narrow = 0;
  double number = 0;
  bool flag = false;
  Colour colour = Colour::red;
  std::optional<std::string> note;
  std::vector<Leaf> leaves;
  std::vector<std::int64_t> counts;
  friend bool operator==(const Everything&, const Everything&) = default;
};

}  // namespace quillo::test

namespace quillo {

template <>
struct EnumerationNames<test::Colour> {
  static constexpr std::array<std::string_view, 2> names = {"red", "lightBlue"};
};

template <>
struct JsonFields<test::Leaf> {
  using R = test::Leaf;
  static constexpr auto table = std::tuple{jsonField("text", &R::text), jsonField("point", &R::point)};
};

template <>
struct JsonFields<test::Everything> {
  using R = test::Everything;
  static constexpr auto table =
      std::tuple{jsonField("wide", &R::wide),     jsonField("narrow", &R::narrow), jsonField("number", &R::number),
                 jsonField("flag", &R::flag),     jsonField("colour", &R::colour), jsonField("note", &R::note),
                 jsonField("leaves", &R::leaves), jsonField("counts", &R::counts)};
};

static void PrintTo(const JsonError& error, std::ostream* stream) {
  *stream << error.errorDescription();
}

}  // namespace quillo

namespace quillo::test {
namespace {

Everything makeEverything() {
  return {.wide = std::numeric_limits<std::int64_t>::min(),
          .narrow = -7,
          .number = 0.1,
          .flag = true,
          .colour = Colour::lightBlue,
          .note = "a/b \"c\" \\ \n\t\x01 é 😀",
          .leaves = {{.text = "", .point = ArtifactPoint{1.5, -2}}, {.text = "x", .point = {}}},
          .counts = {1, std::numeric_limits<std::int64_t>::max()}};
}

/// What reading the text as `T` fails with; fails the test when it does not.
template <class T = Everything>
std::optional<JsonError::Case> failureOf(std::string_view text) {
  try {
    decodeJson<T>(text);
  } catch (const JsonError& error) {
    return error.value();
  }
  ADD_FAILURE() << "was read: " << text;
  return std::nullopt;
}

TEST(JsonWriter, recordsAreWrittenWithSortedKeysAndWithoutAbsentMembers) {
  EXPECT_EQ(R"({"colour":"lightBlue","counts":[1,9223372036854775807],"flag":true,)"
            R"("leaves":[{"point":{"x":1.5,"y":-2},"text":""},{"text":"x"}],"narrow":-7,)"
            R"("note":"a/b \"c\" \\ \n\t\u0001 é 😀","number":0.1,"wide":-9223372036854775808})",
            encodeJson(makeEverything(), JsonStyle::compact));
  const std::vector<Leaf> leaves = {{.text = "x", .point = ArtifactPoint{}}, {}};
  EXPECT_EQ(
      "[\n  {\n    \"point\": {\n      \"x\": 0,\n      \"y\": 0\n    },\n    \"text\": \"x\"\n  },\n"
      "  {\n    \"text\": \"\"\n  }\n]",
      encodeJson(leaves, JsonStyle::prettyPrinted));
  EXPECT_EQ("[]", encodeJson(std::vector<Leaf>{}, JsonStyle::prettyPrinted));
}

TEST(JsonWriter, everyByteIsEscapedOrNotWhereverItStands) {
  for (int byte = 0; byte < 0x80; ++byte) {
    for (std::size_t position = 0; position < 20; ++position) {
      std::string text(20, 'x');
      text[position] = static_cast<char>(byte);
      const std::string written = encodeJson(text, JsonStyle::compact);
      EXPECT_EQ(text, decodeJson<std::string>(written));
      const bool isEscaped = byte < 0x20 || byte == '"' || byte == '\\';
      EXPECT_EQ(isEscaped, written[position + 1] == '\\') << byte << " at " << position;
    }
  }
  const std::string text = std::string(9'000, 'y') + "\n" + std::string(7, 'z');
  EXPECT_EQ("\"" + std::string(9'000, 'y') + "\\n" + std::string(7, 'z') + "\"", encodeJson(text, JsonStyle::compact));
}

TEST(JsonWriter, wholeNumbersHaveAllTheirDigits) {
  const std::vector<double> numbers = {100'000, -1e15, 9007199254740992, 1e16, 1e-7, 1e300, -0.0, 0};
  EXPECT_EQ("[100000,-1000000000000000,9007199254740992,1e+16,1e-07,1e+300,-0.0,0]",
            encodeJson(numbers, JsonStyle::compact));
}

TEST(Json, recordsAreReadBackAsWritten) {
  for (const JsonStyle style : {JsonStyle::compact, JsonStyle::prettyPrinted}) {
    EXPECT_EQ(makeEverything(), decodeJson<Everything>(encodeJson(makeEverything(), style)));
    EXPECT_EQ(Everything{}, decodeJson<Everything>(encodeJson(Everything{}, style)));
  }
}

TEST(Json, doublesComeBackBitForBit) {
  std::mt19937_64 random(3);  // NOLINT(bugprone-random-generator-seed): the same numbers in every run
  std::vector<double> values = {0.0,
                                -0.0,
                                1.0,
                                1e17,
                                1e18,
                                1e19,
                                1.8446744073709552e19,
                                -9.3e18,
                                5e-324,
                                2.2250738585072014e-308,
                                1.7976931348623157e308,
                                123456789012345680.0,
                                999999999999999872.0,
                                0.1 + 0.2};
  while (values.size() < 20'000) {
    const auto value = std::bit_cast<double>(random());
    if (std::isfinite(value)) values.push_back(value);
    values.push_back(static_cast<double>(static_cast<std::int64_t>(random()) >> (random() % 64U)));
  }
  const auto read = decodeJson<std::vector<double>>(encodeJson(values, JsonStyle::compact));
  ASSERT_EQ(values.size(), read.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    ASSERT_EQ(std::bit_cast<std::uint64_t>(values[i]), std::bit_cast<std::uint64_t>(read[i])) << values[i];
  }
  for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_THROW(encodeJson(value, JsonStyle::compact), JsonError);
  }
}

TEST(JsonReader, wholeNumbersMayHaveAFractionOfZero) {
  EXPECT_EQ((std::vector<std::int64_t>{2, -3, 4000, 0, 9223372036854774784}),
            decodeJson<std::vector<std::int64_t>>("[2.0, -3.000, 4e3, -0.0, 9223372036854774784.0]"));
  for (const char* text : {"2.5", "1e19", "9223372036854775808", "18446744073709551616", "-9223372036854775809"}) {
    const auto failure = failureOf<std::int64_t>(text);
    EXPECT_TRUE(failure && std::holds_alternative<JsonError::InvalidValue>(*failure)) << text;
  }
  EXPECT_EQ((std::vector<double>{-7, 18446744073709551615.0, 1e20, -1e20, 123e18}),
            decodeJson<std::vector<double>>("[-7,18446744073709551615,100000000000000000000,-100000000000000000000,"
                                            "123000000000000000000 ]"));
  EXPECT_EQ((Leaf{.text = "\\\"12345678901234567890123", .point = {}}),
            decodeJson<Leaf>(R"({"more":[12345678901234567890123],"text":"\\\"12345678901234567890123"})"));
  EXPECT_EQ((std::vector<std::int64_t>{9007199254740993, INT64_MIN}),
            decodeJson<std::vector<std::int64_t>>("[9007199254740993,-9223372036854775808]"));
}

TEST(JsonReader, whatDoesNotFitTheRecordIsNamedWithItsPlace) {
  const std::string valid = encodeJson(makeEverything(), JsonStyle::compact);
  const auto with = [&](std::string_view from, std::string_view to) {
    std::string text = valid;
    return text.replace(text.find(from), from.size(), to);
  };
  struct Case {
    const char* label;
    std::string text;
    JsonError::Case expected;
  };
  const std::vector<Case> cases = {
      {"no object", "[]", JsonError::WrongType{"$", "an object", "an array"}},
      {"absent member", with("\"flag\":true,", ""), JsonError::MissingMember{"$", "flag"}},
      {"absent in an element", with("\"text\":\"x\"", "\"Text\":\"x\""), JsonError::MissingMember{"leaves[1]", "text"}},
      {"wrong type", with("true", "1"), JsonError::WrongType{"flag", "a boolean", "a number"}},
      {"wrong type deep inside", with("-2", "\"-2\""),
       JsonError::WrongType{"leaves[0].point.y", "a number", "a string"}},
      {"null for a required member", with("-7", "null"), JsonError::WrongType{"narrow", "a whole number", "null"}},
      {"null for an optional member", with("{\"x\":1.5,\"y\":-2}", "null"),
       JsonError::WrongType{"leaves[0].point", "an object", "null"}},
      {"too wide for its member", with("-7", "2147483648"),
       JsonError::InvalidValue{"narrow", "the number is out of range"}},
      {"unknown enumerator", with("lightBlue", "LightBlue"), JsonError::UnknownName{"colour", "LightBlue"}},
      {"object for an array", with("[1,9223372036854775807]", "{}"),
       JsonError::WrongType{"counts", "an array", "an object"}},
  };
  for (const Case& c : cases) EXPECT_EQ(c.expected, failureOf(c.text)) << c.label;
}

TEST(JsonReader, unknownMembersAreIgnoredAndTheFirstOfEqualKeysCounts) {
  EXPECT_EQ((Leaf{.text = "first", .point = {}}),
            decodeJson<Leaf>(R"( {"more":[{}],"\u0074ext":"first","text":"second"} )"));
  EXPECT_EQ(std::string("\U0001F600\uFFFF\0", 8), decodeJson<std::string>(R"("\ud83d\ude00\uffff\u0000")"));
}

TEST(JsonReader, membersAreFoundInWhateverOrderTheyStand) {
  for (const char* text : {R"({"point":{"x":1,"y":2},"text":"a"})", R"({"text":"a","point":{"y":2,"x":1}})",
                           R"({"a":0,"point":{"w":[{"x":9}],"x":1,"xx":{},"y":2,"z":0},"text":"a","zz":0})",
                           R"({"zz":0,"text":"a","point":{"y":2,"y":3,"x":1,"x":3},"point":0,"text":"b"})",
                           R"({"point":{"x":1,"x":0,"y":2,"y":0},"point":1,"text":"a","text":"b"})"}) {
    EXPECT_EQ((Leaf{.text = "a", .point = ArtifactPoint{1, 2}}), decodeJson<Leaf>(text)) << text;
  }
}

TEST(JsonErrorLocation, refusedTextsAreNamedWithOffsetAndReason) {
  const std::string deep(JsonDocument::maximumDepth, '[');
  const std::string deepEnd(JsonDocument::maximumDepth, ']');
  struct Case {
    std::string text;
    JsonError::Case expected;
  };
  const std::vector<Case> cases = {
      {"", JsonError::Malformed{0, "the text ends too early"}},
      {" \n", JsonError::Malformed{2, "the text ends too early"}},
      {"\xEF\xBB\xBF{}", JsonError::Malformed{0, "a value is missing"}},
      {"[1,]", JsonError::Malformed{3, "a value is missing"}},
      {"{\"a\":1,}", JsonError::Malformed{7, "a member's key is missing"}},
      {"{a:1}", JsonError::Malformed{1, "a member's key is missing"}},
      {"{\"a\" 1}", JsonError::Malformed{5, "a colon is missing behind the key"}},
      {"[1 2]", JsonError::Malformed{3, "a comma or a closing bracket is missing"}},
      {"[1}", JsonError::Malformed{2, "a comma or a closing bracket is missing"}},
      {"{} x", JsonError::Malformed{3, "something follows the value"}},
      {"[[1]", JsonError::Malformed{4, "the text ends too early"}},
      {"[truex]", JsonError::Malformed{1, "a value is missing"}},
      {"NaN", JsonError::Malformed{0, "a value is missing"}},
      {"-", JsonError::Malformed{1, "the text ends too early"}},
      {"[01]", JsonError::Malformed{2, "a number begins with a needless zero"}},
      {"[1.]", JsonError::Malformed{3, "a digit is missing"}},
      {"[1e+]", JsonError::Malformed{4, "a digit is missing"}},
      {"[1x]", JsonError::Malformed{2, "a number goes on wrongly"}},
      {"[-18446744073709551616,1-]", JsonError::Malformed{24, "a number goes on wrongly"}},
      {"[" + std::string(310, '9') + "]", JsonError::Malformed{1, "a number is too large"}},
      {"[-1e400]", JsonError::Malformed{1, "a number is too large"}},
      {"[1" + std::string(400, '0') + ".5e-50]", JsonError::Malformed{1, "a number is too large"}},
      {"\"a\nb\"", JsonError::Malformed{2, "a control character stands in a string"}},
      {"\"\\x\"", JsonError::Malformed{2, "an escape is unknown"}},
      {"\"\\u00g0\"", JsonError::Malformed{5, "an escape is not four hexadecimal digits"}},
      {"\"a\\ud83d\"", JsonError::Malformed{2, "half of a surrogate pair is missing"}},
      {"\"a\\ud83d\\u0041\"", JsonError::Malformed{2, "half of a surrogate pair is missing"}},
      {"\"a\\ude00\"", JsonError::Malformed{2, "half of a surrogate pair is missing"}},
      {"\"open", JsonError::Malformed{5, "the text ends too early"}},
      {"[\"ab\xC3\"]", JsonError::NotUtf8{4}},
      {"[1,\xFF]", JsonError::NotUtf8{3}},
      {"[1,,\xFF]", JsonError::Malformed{3, "a value is missing"}},
      {"[" + deep + "1" + deepEnd + "]", JsonError::TooDeep{JsonDocument::maximumDepth, JsonDocument::maximumDepth}},
      {std::string(200'000, '['), JsonError::TooDeep{JsonDocument::maximumDepth, JsonDocument::maximumDepth}},
  };
  for (const Case& c : cases) EXPECT_EQ(c.expected, failureOf(c.text)) << c.text.substr(0, 40);
  EXPECT_NO_THROW(JsonDocument::parse(deep + "1" + deepEnd));
  for (const char* tiny : {"1e-400", "0.0e999", "-0e99999999999999999999"}) {
    EXPECT_EQ(0.0, decodeJson<double>(tiny)) << tiny;
  }
}

/// The parser and the scan behind it must agree about every text: a refused one has a fault, an accepted one has none.
void expectTypedOutcome(const std::string& text) {
  constexpr std::string_view nothingFound = "nothing found";
  const JsonError located = locateJsonError(text, JsonDocument::maximumDepth, nothingFound);
  const JsonError none(JsonError::Malformed{text.size(), std::string(nothingFound)});
  try {
    const JsonDocument document = JsonDocument::parse(text);
    EXPECT_EQ(none, located) << text;
    try {
      readJson<Everything>(document.root());
    } catch (const JsonError& error) {
      EXPECT_GE(error.value().index(), JsonError::Case(JsonError::MissingMember{}).index()) << text;
    }
  } catch (const JsonError& error) {
    EXPECT_EQ(error, located) << text;
    EXPECT_NE(none, located) << text;
  }
}

TEST(JsonReader, everyTruncationAndEverySingleByteCorruptionGivesATypedOutcome) {
  const std::string valid = encodeJson(makeEverything(), JsonStyle::compact);
  for (std::size_t size = 0; size < valid.size(); ++size) {
    const auto failure = failureOf(valid.substr(0, size));
    ASSERT_TRUE(failure);
    expectTypedOutcome(valid.substr(0, size));
  }
  for (std::size_t i = 0; i < valid.size(); ++i) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      std::string corrupted = valid;
      corrupted[i] = static_cast<char>(byte);
      expectTypedOutcome(corrupted);
    }
  }
}

TEST(JsonReader, parserAndScanAgreeOnGeneratedTexts) {
  // Pieces of the grammar in any order: nearly always refused, often late.
  const std::vector<std::string> pieces = {
      "{",       "}",   "[",       "]",       ",",   ":",        "\"a\"", "\"",           "1",
      "-",       "0",   ".5",      "e9",      "E-3", "true",     "null",  "false",        " ",
      "\n",      "\\u", "\\ud83d", "\\ude00", "\\n", "\xC3\xA9", "\xC3",  "999999999999", "e300",
      "{\"a\":", "[]",  "{}"};
  std::mt19937 random(5);  // NOLINT(bugprone-random-generator-seed): the same texts in every run
  for (int round = 0; round < 50'000; ++round) {
    std::string text;
    for (unsigned count = random() % 9U; count > 0; --count) text += pieces[random() % pieces.size()];
    expectTypedOutcome(text);
  }
}

}  // namespace
}  // namespace quillo::test
