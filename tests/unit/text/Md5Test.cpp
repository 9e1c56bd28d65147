#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "text/Md5.h"

namespace zovk {
namespace {

TEST(Md5, AgreesWithWhatOthersCompute) {
  EXPECT_EQ(md5Hex(""), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(md5Hex("abc"), "900150983cd24fb0d6963f7d28e17f72");
  EXPECT_EQ(md5Hex("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
  EXPECT_EQ(md5Hex(std::string(256, 'a')), "81109eec5aa1a284fb5327b10e9c16b9");
  EXPECT_EQ(md5Hex(std::string(257, 'a')), "b7958df91b9413477491e9b6e27f1bac");
}

TEST(Md5, DoesNotDependOnHowTheTextIsCut) {
  const std::string text(1000, 'x');
  for (const std::size_t size : {1U, 7U, 63U, 64U, 65U, 256U, 999U, 1000U}) {
    Md5 digest;
    for (std::size_t i = 0; i < text.size(); i += size) digest.update(text.substr(i, size));
    digest.update("");
    EXPECT_EQ(digest.finish(), md5Hex(text)) << size;
  }
}

TEST(Md5, StartsAfreshAfterEachDigest) {
  Md5 digest;
  digest.update("first");
  digest.finish();
  digest.update("abc");
  EXPECT_EQ(digest.finish(), "900150983cd24fb0d6963f7d28e17f72");
  EXPECT_EQ(digest.finish(), "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(Md5, CountsZeroBytes) {
  EXPECT_NE(md5Hex(std::string("a\0b", 3)), md5Hex("a"));
  EXPECT_EQ(md5Hex(std::string(1, '\0')), "93b885adfe0da089cdf634904fd59f71");
}

TEST(Md5, IsComputedByManyThreadsAtOnce) {
  std::vector<std::string> digests(8);
  std::vector<std::thread> threads;
  for (std::string& digest : digests) {
    threads.emplace_back([&digest] {
      for (int i = 0; i < 100; ++i) digest = md5Hex("abc");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(digests, std::vector<std::string>(8, "900150983cd24fb0d6963f7d28e17f72"));
}

}  // namespace
}  // namespace zovk
