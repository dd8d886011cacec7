#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo::test {
namespace {

Date dateAt(std::int64_t microsecondsSince1970) {
  return Date{std::chrono::microseconds{microsecondsSince1970}};
}

TEST(Date, isReadStrictly) {
  struct Case {
    const char* text;
    std::optional<Date> expected;
  };
  const std::vector<Case> cases = {
      {"1970-01-01T00:00:00Z", dateAt(0)},
      {"2026-11-14T21:35:47Z", dateAt(1'794'692'147'000'000)},
      {"2026-11-14T21:35:47.5Z", dateAt(1'794'692'147'500'000)},
      {"2026-11-14T21:35:47.123456789Z", dateAt(1'794'692'147'123'456)},
      {"2026-11-14T23:05:47+01:30", dateAt(1'794'692'147'000'000)},
      {"2026-11-14T13:35:47.25-08:00", dateAt(1'794'692'147'250'000)},
      {"1969-12-31T23:59:59.999Z", dateAt(-1'000)},
      {"2024-02-29T00:00:00Z", dateAt(1'709'164'800'000'000)},
      {"2023-02-29T00:00:00Z", {}},
      {"2026-11-31T00:00:00Z", {}},
      {"2026-00-10T00:00:00Z", {}},
      {"2026-11-14T24:00:00Z", {}},
      {"2026-11-14T21:60:00Z", {}},
      {"2026-11-14T21:35:60Z", {}},
      {"2026-11-14T21:35:47", {}},
      {"2026-11-14T21:35:47z", {}},
      {"2026-11-14t21:35:47Z", {}},
      {"2026-11-14 21:35:47Z", {}},
      {"2026-11-14T21:35Z", {}},
      {"2026-11-14", {}},
      {"20261114T213547Z", {}},
      {"26-11-14T21:35:47Z", {}},
      {"+2026-11-14T21:35:47Z", {}},
      {"2026-11-4T21:35:47Z", {}},
      {"2026-11-14T21:35:47.Z", {}},
      {"2026-11-14T21:35:47,5Z", {}},
      {"2026-11-14T21:35:47+0100", {}},
      {"2026-11-14T21:35:47+24:00", {}},
      {"2026-11-14T21:35:47Z ", {}},
      {" 2026-11-14T21:35:47Z", {}},
      {"0000-01-01T00:00:00+00:01", {}},
      {"9999-12-31T23:59:59-00:01", {}},
      {"", {}},
  };
  for (const Case& c : cases) EXPECT_EQ(c.expected, parseDate(c.text)) << c.text;
}

TEST(Date, isWrittenInWholeSecondsOrMillisecondsTowardThePast) {
  EXPECT_EQ("2026-11-14T21:35:47Z", formatDateSeconds(dateAt(1'794'692'147'999'999)));
  EXPECT_EQ("2026-11-14T21:35:47.999Z", formatDateMilliseconds(dateAt(1'794'692'147'999'999)));
  EXPECT_EQ("1969-12-31T23:59:59Z", formatDateSeconds(dateAt(-1)));
  EXPECT_EQ("1969-12-31T23:59:59.999Z", formatDateMilliseconds(dateAt(-1)));
  EXPECT_EQ("0033-04-03T00:00:00Z", formatDateSeconds(*parseDate("0033-04-03T00:00:00Z")));
}

TEST(Date, countsFromTheReferenceDateWithoutLoss) {
  EXPECT_EQ(0.0, secondsSinceReferenceDate(*parseDate("2001-01-01T00:00:00Z")));
  for (const std::int64_t microseconds : {0LL, 1LL, -1LL, 1'794'692'147'123'456LL, -2'000'000'000'000'001LL}) {
    const Date date = dateAt(microseconds);
    EXPECT_EQ(date, dateFromSecondsSinceReferenceDate(secondsSinceReferenceDate(date)));
  }
  EXPECT_EQ("9999-12-31T23:59:59Z", formatDateSeconds(dateFromSecondsSinceReferenceDate(1e300)));
  EXPECT_EQ("0000-01-01T00:00:00Z", formatDateSeconds(dateFromSecondsSinceReferenceDate(-1e300)));
}

TEST(UUID, readsOnlyTheCanonicalForm) {
  const std::string canonical = "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0";
  const auto parsed = UUID::parse(canonical);
  ASSERT_TRUE(parsed);
  EXPECT_EQ(canonical, parsed->text());
  EXPECT_EQ(parsed, UUID::parse("0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0"));
  for (const char* text : {"", "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}", "0F1E2D3C4B5A69788796A5B4C3D2E1F0",
                           "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F00",
                           "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1FG", "0F1E2D3C-4B5A-69788-796-A5B4C3D2E1F0",
                           " F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0", "+F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"}) {
    EXPECT_EQ(std::nullopt, UUID::parse(text)) << text;
  }
}

TEST(UUID, newOnesAreRandomAndSayTheirVersion) {
  RandomUUIDGenerator generator;
  std::set<UUID> made;
  for (int i = 0; i < 100; ++i) {
    const UUID id = generator.makeUUID();
    EXPECT_EQ('4', id.text()[14]);
    EXPECT_NE(std::string::npos, std::string("89AB").find(id.text()[19]));
    made.insert(id);
  }
  EXPECT_EQ(100U, made.size());
}

TEST(Sha256, oneHasherComputesDigestsInTurn) {
  Sha256Hasher hasher;
  const std::string emptyDigest = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
  EXPECT_EQ(emptyDigest, hexadecimalText(hasher.digest("")));
  EXPECT_EQ("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad", hexadecimalText(hasher.digest("abc")));
  Sha256Hasher moved = std::move(hasher);
  EXPECT_EQ(emptyDigest, hexadecimalText(moved.digest("")));
  EXPECT_EQ("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0",
            hexadecimalText(moved.digest(std::string(1'000'000, 'a'))));
}

}  // namespace
}  // namespace quillo::test
