#include "Tests/Support/UserDefaultsContract.h"

#include <gtest/gtest.h>

#include <limits>

#include "QuilloCore/Support/JsonError.h"

namespace quillo::test {

void expectUserDefaultsContract(UserDefaults& defaults) {
  EXPECT_EQ(defaults.data("record"), std::nullopt);
  EXPECT_EQ(defaults.integer("number"), std::nullopt);
  defaults.remove("record");

  defaults.setData("record", R"( {"a" : [1, 2.5, null, true],  "b" : "\u00fc/\n"} )");
  defaults.setInteger("number", std::numeric_limits<std::int64_t>::min());
  defaults.setString("text", "a \"b\"\n\U0001F511");
  EXPECT_EQ(defaults.data("record"), "{\"a\":[1,2.5,null,true],\"b\":\"ü/\\n\"}");
  EXPECT_EQ(defaults.integer("number"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(defaults.string("text"), "a \"b\"\n\U0001F511");

  // A value of another type is as good as none.
  EXPECT_EQ(defaults.integer("text"), std::nullopt);
  EXPECT_EQ(defaults.string("number"), std::nullopt);
  EXPECT_EQ(defaults.integer("record"), std::nullopt);
  EXPECT_EQ(defaults.data("number"), "-9223372036854775808");

  // A key is any text.
  defaults.setInteger("", 1);
  defaults.setInteger("a.b \"c\"\n", 2);
  EXPECT_EQ(defaults.integer(""), 1);
  EXPECT_EQ(defaults.integer("a.b \"c\"\n"), 2);

  for (const char* broken : {"", "{", "1 2", "\"\xFF\""}) {
    EXPECT_THROW(defaults.setData("number", broken), JsonError) << broken;
  }
  EXPECT_EQ(defaults.data("number"), "-9223372036854775808");

  defaults.setInteger("record", 3);
  EXPECT_EQ(defaults.integer("record"), 3);
  defaults.remove("record");
  EXPECT_EQ(defaults.data("record"), std::nullopt);
  EXPECT_EQ(defaults.integer("a.b \"c\"\n"), 2);
}

}  // namespace quillo::test
