#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Backend.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class FileSystemContract : public testing::Test {
 protected:
  FileSystem& files() { return backend.files(); }
  std::string at(const std::string& name) { return backend.directory() + "/" + name; }
  void write(const std::string& name, std::string_view text) {
    ASSERT_FALSE(files().writeAtomically(at(name), text));
  }
  void makeDirectory(const std::string& name) { ASSERT_FALSE(files().createDirectory(at(name))); }

  FilesBackend backend;
};

TEST_F(FileSystemContract, ReadsBackWhatWasWritten) {
  const std::string bytes("a\0b\r\n\xff", 6);
  write("file", bytes);
  EXPECT_THAT(files().read(at("file")), Optional(bytes));
  EXPECT_TRUE(files().exists(at("file")));
}

TEST_F(FileSystemContract, AFileMayBeEmpty) {
  write("file", "");
  EXPECT_THAT(files().read(at("file")), Optional(std::string()));
}

TEST_F(FileSystemContract, WritingReplacesALongerFileWhole) {
  write("file", "a long text");
  write("file", "short");
  EXPECT_THAT(files().read(at("file")), Optional(std::string("short")));
}

TEST_F(FileSystemContract, WritingLeavesNothingElseInTheDirectory) {
  write("file", "one");
  write("file", "two");
  EXPECT_THAT(files().listRecursively(backend.directory()), Optional(ElementsAre("file")));
}

TEST_F(FileSystemContract, WritingIntoADirectoryThatIsMissingFails) {
  EXPECT_TRUE(files().writeAtomically(at("missing/file"), "text"));
  EXPECT_FALSE(files().exists(at("missing")));
}

TEST_F(FileSystemContract, WritingOverADirectoryFailsAndLeavesIt) {
  makeDirectory("directory");
  write("directory/file", "text");
  EXPECT_TRUE(files().writeAtomically(at("directory"), "text"));
  EXPECT_THAT(files().listRecursively(backend.directory()),
              Optional(ElementsAre("directory", "directory/file")));
}

TEST_F(FileSystemContract, WritingOverALinkReplacesTheLink) {
  write("target", "old");
  backend.addLink(at("link"), at("target"));
  write("link", "new");
  EXPECT_THAT(files().read(at("target")), Optional(std::string("old")));
  EXPECT_THAT(files().read(at("link")), Optional(std::string("new")));
}

TEST_F(FileSystemContract, AppendAddsToTheEnd) {
  write("file", "12");
  EXPECT_FALSE(files().append(at("file"), ",3"));
  EXPECT_FALSE(files().append(at("file"), ""));
  EXPECT_THAT(files().read(at("file")), Optional(std::string("12,3")));
}

TEST_F(FileSystemContract, AppendMakesNoFile) {
  EXPECT_EQ(files().append(at("missing"), "text"), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(files().exists(at("missing")));
}

TEST_F(FileSystemContract, ADirectoryIsNoFile) {
  makeDirectory("directory");
  EXPECT_TRUE(files().exists(at("directory")));
  EXPECT_FALSE(files().read(at("directory")));
  EXPECT_FALSE(files().readPieces(at("directory"), [](std::string_view) {}));
  EXPECT_TRUE(files().append(at("directory"), "text"));
}

TEST_F(FileSystemContract, NothingIsThereUntilItIsMade) {
  EXPECT_FALSE(files().exists(at("missing")));
  EXPECT_FALSE(files().read(at("missing")));
  EXPECT_FALSE(files().identity(at("missing")));
  EXPECT_FALSE(files().listRecursively(at("missing")));
  EXPECT_FALSE(files().readPieces(at("missing"), [](std::string_view) {}));
  EXPECT_EQ(files().remove(at("missing")), std::errc::no_such_file_or_directory);
}

TEST_F(FileSystemContract, APathThatCannotExistIsAPathWhereNothingIs) {
  write("file", "text");
  makeDirectory("directory");
  for (const std::string& path : {std::string(), at("file") + std::string("\0", 1),
                                  at("directory") + std::string("\0x", 2)}) {
    EXPECT_FALSE(files().exists(path));
    EXPECT_FALSE(files().identity(path));
    EXPECT_FALSE(files().read(path));
    EXPECT_FALSE(files().readPieces(path, [](std::string_view) {}));
    EXPECT_FALSE(files().listRecursively(path));
    EXPECT_TRUE(files().createDirectory(path));
    EXPECT_TRUE(files().writeAtomically(path, "other"));
    EXPECT_TRUE(files().append(path, "other"));
    EXPECT_TRUE(files().remove(path));
  }
  EXPECT_THAT(files().read(at("file")), Optional(std::string("text")));
}

TEST_F(FileSystemContract, APathThatIsTooLongFails) {
  const std::string path = at(std::string(300, 'x'));
  EXPECT_FALSE(files().exists(path));
  EXPECT_TRUE(files().writeAtomically(path, "text"));
  EXPECT_TRUE(files().createDirectory(path));
}

TEST_F(FileSystemContract, CreateDirectoryMakesOneLevel) {
  EXPECT_TRUE(files().createDirectory(at("a/b")));
  EXPECT_FALSE(files().exists(at("a")));
  makeDirectory("a");
  makeDirectory("a/b");
  EXPECT_TRUE(files().exists(at("a/b")));
}

TEST_F(FileSystemContract, CreateDirectoryFailsWhereSomethingIs) {
  makeDirectory("a");
  write("file", "text");
  EXPECT_EQ(files().createDirectory(at("a")), std::errc::file_exists);
  EXPECT_EQ(files().createDirectory(at("file")), std::errc::file_exists);
}

TEST_F(FileSystemContract, ListsEverythingBelowADirectoryBeforeItsEntries) {
  makeDirectory("b");
  makeDirectory("b/c");
  write("b/c/deep", "text");
  write("b-side", "text");
  write("a", "text");
  const auto entries = files().listRecursively(backend.directory());
  ASSERT_TRUE(entries);
  EXPECT_THAT(*entries, testing::UnorderedElementsAre("a", "b", "b-side", "b/c", "b/c/deep"));
  const auto place = [&](const char* name) {
    return std::find(entries->begin(), entries->end(), name) - entries->begin();
  };
  EXPECT_LT(place("b"), place("b/c"));
  EXPECT_LT(place("b/c"), place("b/c/deep"));
}

TEST_F(FileSystemContract, AnEmptyDirectoryListsNothingAndAFileCannotBeListed) {
  write("file", "text");
  makeDirectory("empty");
  EXPECT_THAT(files().listRecursively(at("empty")), Optional(IsEmpty()));
  EXPECT_FALSE(files().listRecursively(at("file")));
}

TEST_F(FileSystemContract, LinksAreListedAndNotFollowed) {
  makeDirectory("directory");
  write("directory/file", "text");
  backend.addLink(at("link"), at("directory"));
  backend.addLink(at("broken"), at("missing"));
  EXPECT_THAT(
      files().listRecursively(backend.directory()),
      Optional(testing::UnorderedElementsAre("directory", "directory/file", "link", "broken")));
}

TEST_F(FileSystemContract, ADirectoryBehindALinkIsNotListed) {
  ASSERT_FALSE(files().createDirectory(at("directory")));
  write("directory/file", "text");
  backend.addLink(at("link"), at("directory"));
  EXPECT_FALSE(files().listRecursively(at("link")));
  EXPECT_TRUE(files().listRecursively(at("directory")));
}

TEST_F(FileSystemContract, ALinkThatLeadsNowhereDoesNotExist) {
  backend.addLink(at("broken"), at("missing"));
  EXPECT_FALSE(files().exists(at("broken")));
  EXPECT_FALSE(files().identity(at("broken")));
  EXPECT_FALSE(files().remove(at("broken")));
  EXPECT_THAT(files().listRecursively(backend.directory()), Optional(IsEmpty()));
}

TEST_F(FileSystemContract, LinksAreFollowedWhenLookingAndReading) {
  write("file", "text");
  backend.addLink(at("link"), at("file"));
  EXPECT_TRUE(files().exists(at("link")));
  EXPECT_THAT(files().read(at("link")), Optional(std::string("text")));
  EXPECT_EQ(files().identity(at("link")), files().identity(at("file")));
}

TEST_F(FileSystemContract, RemovesAFile) {
  write("file", "text");
  EXPECT_FALSE(files().remove(at("file")));
  EXPECT_FALSE(files().exists(at("file")));
}

TEST_F(FileSystemContract, RemovesADirectoryWithAllItHolds) {
  makeDirectory("a");
  makeDirectory("a/b");
  write("a/b/file", "text");
  EXPECT_FALSE(files().remove(at("a")));
  EXPECT_FALSE(files().exists(at("a")));
}

TEST_F(FileSystemContract, RemovesALinkAndNotItsTarget) {
  makeDirectory("directory");
  write("directory/file", "text");
  makeDirectory("other");
  backend.addLink(at("other/link"), at("directory"));
  EXPECT_FALSE(files().remove(at("other")));
  EXPECT_TRUE(files().exists(at("directory/file")));
}

TEST_F(FileSystemContract, PiecesAddUpToTheFile) {
  std::string bytes;
  for (int i = 0; i < 300'000; ++i) bytes += static_cast<char>(i * 7);
  write("file", bytes);
  std::string read;
  int pieces = 0;
  EXPECT_TRUE(files().readPieces(at("file"), [&](std::string_view piece) {
    read += piece;
    ++pieces;
  }));
  EXPECT_EQ(read, bytes);
  EXPECT_GT(pieces, 1);
}

TEST_F(FileSystemContract, AnEmptyFileCanBeReadInPieces) {
  write("file", "");
  std::string read;
  EXPECT_TRUE(files().readPieces(at("file"), [&](std::string_view piece) { read += piece; }));
  EXPECT_EQ(read, "");
}

TEST_F(FileSystemContract, IdentityStaysWhileTheFileDoes) {
  write("file", "text");
  const auto identity = files().identity(at("file"));
  ASSERT_TRUE(identity);
  EXPECT_EQ(identity->size, 4U);
  files().read(at("file"));
  EXPECT_EQ(files().identity(at("file")), identity);
}

TEST_F(FileSystemContract, IdentityTellsAReplacedFileFromTheOldOne) {
  write("file", "text");
  const auto before = files().identity(at("file"));
  write("file", "next");
  EXPECT_NE(files().identity(at("file")), before);
}

TEST_F(FileSystemContract, IdentityTellsAFileThatGrew) {
  write("file", "text");
  const auto before = files().identity(at("file"));
  ASSERT_FALSE(files().append(at("file"), "more"));
  EXPECT_NE(files().identity(at("file")), before);
}

TEST_F(FileSystemContract, AReaderSeesOldOrNewBytesWholeWhileTheFileIsReplaced) {
  const std::string first(100'000, 'a');
  const std::string second(50'000, 'b');
  write("file", first);
  std::thread writer([&] {
    for (int i = 0; i < 10; ++i) {
      files().writeAtomically(at("file"), second);
      files().writeAtomically(at("file"), first);
    }
  });
  for (int i = 0; i < 200; ++i) {
    const auto seen = files().read(at("file"));
    ASSERT_TRUE(seen == first || seen == second);
  }
  writer.join();
}

}  // namespace
}  // namespace zovk
