#include <algorithm>

#include "record/ZOVKPopupModel.h"
#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

std::vector<std::string> namesThatLeadOut() {
  return {"..",
          ".",
          "../a.html",
          "../../a.html",
          "../ZOVKPopup2/a.html",
          "../ZOVKPopup",
          "sub/..",
          "sub/../../a.html",
          "./../a.html",
          "/../a.html",
          "//..//..//a.html",
          "sub/./../../../../../../../../app/a.html",
          "ZOVKPopup_1_1_1_/../../a.html",
          "ZOVKPopup_1_1_1_x/../../../a.html"};
}

class UnsafeName : public StorageFixture {
 protected:
  UnsafeName() {
    // Every directory that a name could reach by its steps is there.
    files().addDirectory(cachePath("sub"));
    files().addDirectory(cachePath("ZOVKPopup_1_1_1_"));
    files().addDirectory(cachePath("ZOVKPopup_1_1_1_x"));
    files().addDirectory("/home/player/Library/Caches/ZOVKPopup2");
    before_ = files().list("/");
  }

  std::vector<std::string> before_;
};

TEST_F(UnsafeName, ThatLeadsOutOfTheDirectoryIsNeverWritten) {
  for (const std::string& name : namesThatLeadOut()) {
    for (const bool append : {false, true}) {
      log().clear();
      EXPECT_FALSE(fileManager().saveInternalFile(name, "page", append)) << name;
      EXPECT_TRUE(log().contains("[Error] Param illegal")) << name;
      EXPECT_EQ(files().list("/"), before_) << name;
    }
  }
}

TEST_F(UnsafeName, ThatLeadsOutOfTheDirectoryDoesNotReplaceWhatIsThere) {
  files().addFile("/home/player/Library/Caches/save.dat", "precious");
  EXPECT_FALSE(fileManager().saveInternalFile("../save.dat", "page", false));
  EXPECT_FALSE(fileManager().saveInternalFile("../save.dat", "page", true));
  EXPECT_EQ(files().text("/home/player/Library/Caches/save.dat"), "precious");
}

TEST_F(UnsafeName, ThatLooksAbsoluteStaysBelowTheDirectory) {
  files().addDirectory("/etc");
  files().addDirectory(cachePath("etc"));
  EXPECT_TRUE(fileManager().saveInternalFile("/etc/passwd", "page", false));
  EXPECT_EQ(files().text("/etc/passwd"), std::nullopt);
  EXPECT_EQ(cacheText("etc/passwd"), "page");
}

TEST_F(UnsafeName, ThatStepsAroundInsideTheDirectoryIsAllowed) {
  EXPECT_TRUE(fileManager().saveInternalFile("sub/../a..html", "page", false));
  EXPECT_EQ(cacheText("a..html"), "page");
  EXPECT_TRUE(fileManager().saveInternalFile("..a.html", "page", false));
  EXPECT_EQ(cacheText("..a.html"), "page");
}

TEST_F(UnsafeName, WithAZeroByteIsNeverWritten) {
  for (const std::string& name :
       {std::string("a\0b", 3), std::string("\0", 1), std::string("a.html\0/../../b", 15)}) {
    EXPECT_FALSE(fileManager().saveInternalFile(name, "page", false));
    EXPECT_FALSE(fileManager().saveInternalFile(name, "page", true));
    EXPECT_EQ(files().list("/"), before_);
  }
}

TEST_F(UnsafeName, ThatIsFarTooLongIsNeverWritten) {
  EXPECT_FALSE(fileManager().saveInternalFile(std::string(1'000'000, 'a'), "page", false));
  EXPECT_EQ(files().list("/"), before_);
}

TEST_F(UnsafeName, MadeFromAHostileDigestNeverLeavesTheDirectory) {
  for (const std::string& sig : namesThatLeadOut()) {
    ZOVKPopupModel popup;
    popup.content_type = 1;
    popup.sig = "/" + sig;
    fileManager().saveInternalFile(popup.getPopupFileName(), "page", false);
  }
  for (const std::string& path : files().list("/")) {
    const bool isOld = std::find(before_.begin(), before_.end(), path) != before_.end();
    EXPECT_TRUE(isOld || ("/" + path).starts_with(cachePath(""))) << path;
  }
}

TEST_F(UnsafeName, InAKeepListDeletesNothingOutside) {
  files().addFile("/home/player/Library/Caches/save.dat", "precious");
  fileManager().deleteInternalFileWithout("../save.dat,/etc,..");
  EXPECT_EQ(files().text("/home/player/Library/Caches/save.dat"), "precious");
  EXPECT_TRUE(files().isDirectory("/home/player/Library/Caches/ZOVKPopup2"));
  EXPECT_TRUE(files().isDirectory(kCache));
}

TEST_F(UnsafeName, OfALinkIsSweptWithoutWhatItPointsTo) {
  files().addFile("/home/player/save.dat", "precious");
  files().addLink(cachePath("link"), "/home/player");
  fileManager().deleteInternalFileWithout(std::nullopt);
  EXPECT_EQ(files().text("/home/player/save.dat"), "precious");
  EXPECT_TRUE(files().list(kCache).empty());
}

}  // namespace
}  // namespace zovk
