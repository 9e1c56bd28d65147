#include <gmock/gmock.h>

#include "Backend.h"

namespace zovk {
namespace {

using testing::Optional;

class BundlesContract : public testing::Test {
 protected:
  std::string at(const std::string& name) { return backend.mainDirectory() + "/" + name; }
  void write(const std::string& name, std::string_view text) {
    ASSERT_FALSE(backend.files().writeAtomically(at(name), text));
  }
  void makeBundle(const std::string& name) {
    ASSERT_FALSE(backend.files().createDirectory(at(name)));
  }

  BundlesBackend backend;
};

TEST_F(BundlesContract, TheMainBundleIsTheHostsDirectory) {
  const auto bundle = backend.bundles().mainBundle();
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(bundle->resourcePath(), backend.mainDirectory());
}

TEST_F(BundlesContract, FindsAResourceByNameAndType) {
  write("page.html", "text");
  EXPECT_THAT(backend.bundles().mainBundle()->pathForResource("page", "html"),
              Optional(at("page.html")));
}

TEST_F(BundlesContract, AResourceWithoutATypeIsFoundByItsName) {
  write("LICENCE", "text");
  EXPECT_THAT(backend.bundles().mainBundle()->pathForResource("LICENCE", ""),
              Optional(at("LICENCE")));
}

TEST_F(BundlesContract, AMissingResourceIsAbsent) {
  write("page.html", "text");
  const auto bundle = backend.bundles().mainBundle();
  EXPECT_FALSE(bundle->pathForResource("page", "htm"));
  EXPECT_FALSE(bundle->pathForResource("other", "html"));
  EXPECT_FALSE(bundle->pathForResource("", ""));
  EXPECT_FALSE(bundle->pathForResource("", "html"));
}

TEST_F(BundlesContract, ABundleInsideTheMainBundleIsAResourceOfIt) {
  makeBundle("Setting.bundle");
  write("Setting.bundle/config.ini", "text");
  const auto path = backend.bundles().mainBundle()->pathForResource("Setting", "bundle");
  ASSERT_TRUE(path);
  const auto bundle = backend.bundles().bundleWithPath(*path);
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(bundle->resourcePath(), at("Setting.bundle"));
  EXPECT_THAT(bundle->pathForResource("config", "ini"), Optional(at("Setting.bundle/config.ini")));
}

TEST_F(BundlesContract, ThereIsNoBundleWhereNoDirectoryIs) {
  write("file", "text");
  EXPECT_EQ(backend.bundles().bundleWithPath(at("missing.bundle")), nullptr);
  EXPECT_EQ(backend.bundles().bundleWithPath(at("file")), nullptr);
  EXPECT_EQ(backend.bundles().bundleWithPath(""), nullptr);
}

TEST_F(BundlesContract, ReadsTheInfoDictionary) {
  makeBundle("A.bundle");
  write("A.bundle/Info.json", R"({"ZOVK_DEBUG": true, "name": "a"})");
  const auto bundle = backend.bundles().bundleWithPath(at("A.bundle"));
  EXPECT_EQ(bundle->infoDictionary().at("name"), "a");
  EXPECT_TRUE(boolValue(bundle->infoDictionary(), "ZOVK_DEBUG"));
  EXPECT_FALSE(boolValue(bundle->infoDictionary(), "other"));
}

TEST_F(BundlesContract, AnInfoDictionaryMayLieFiveHundredAndTwelveLevelsDeep) {
  const auto nested = [](std::size_t depth) {
    return R"({"a":)" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}";
  };
  makeBundle("A.bundle");
  write("A.bundle/Info.json", nested(512));
  makeBundle("B.bundle");
  write("B.bundle/Info.json", nested(513));
  EXPECT_EQ(backend.bundles().bundleWithPath(at("A.bundle"))->infoDictionary().size(), 1U);
  EXPECT_TRUE(backend.bundles().bundleWithPath(at("B.bundle"))->infoDictionary().empty());
}

TEST_F(BundlesContract, AMissingInfoDictionaryIsEmpty) {
  makeBundle("A.bundle");
  EXPECT_TRUE(backend.bundles().bundleWithPath(at("A.bundle"))->infoDictionary().empty());
}

TEST_F(BundlesContract, ABrokenInfoDictionaryIsEmpty) {
  makeBundle("A.bundle");
  for (const char* text : {"", "{\"a\":", "[1]", "\"a\"", "null"}) {
    write("A.bundle/Info.json", text);
    EXPECT_TRUE(backend.bundles().bundleWithPath(at("A.bundle"))->infoDictionary().empty()) << text;
  }
}

}  // namespace
}  // namespace zovk
