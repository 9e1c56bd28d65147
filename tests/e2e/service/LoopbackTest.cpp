#include <gtest/gtest.h>

#include "service/Loopback.h"

namespace zovk::service {
namespace {

TEST(ServiceLoopback, IsWhatCannotBeReachedFromOutside) {
  for (const char* address : {"127.0.0.1", "127.255.3.4", "::1", "::ffff:127.0.0.1", "localhost"}) {
    EXPECT_TRUE(isLoopback(address)) << address;
  }
  for (const char* address : {"0.0.0.0", "128.0.0.1", "10.0.0.127", "::", "::ffff:10.0.0.1",
                              "fe80::1", "127.0.0.1.example", "localhost.example", ""}) {
    EXPECT_FALSE(isLoopback(address)) << address;
  }
}

TEST(ServiceLoopback, AddressesOfTheSixthVersionGetBrackets) {
  EXPECT_EQ(baseAddress(true, "::1", 80), "https://[::1]:80");
  EXPECT_EQ(baseAddress(false, "127.0.0.1", 80), "http://127.0.0.1:80");
}

}  // namespace
}  // namespace zovk::service
