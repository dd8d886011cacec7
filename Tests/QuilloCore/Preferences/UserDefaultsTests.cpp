#include <gtest/gtest.h>

#include "Tests/Support/InMemoryUserDefaults.h"
#include "Tests/Support/UserDefaultsContract.h"

namespace quillo::test {
namespace {

TEST(UserDefaults, inMemoryStoreKeepsTheContract) {
  InMemoryUserDefaults defaults;
  expectUserDefaultsContract(defaults);
}

}  // namespace
}  // namespace quillo::test
