#pragma once

#include <cstdint>
#include <string>

namespace zovk::tool {

struct SigOptions {
  std::string target;  ///< A file or an address.
  bool json = false;
};

/// A configuration document on disk, and the place of its pages.
struct DocumentOptions {
  std::string file;
  std::string pages;  ///< Empty: beside the document.
  std::string
      as;  ///< "remote", "service", "site", "local", "bundle", or empty: by the file's name.
  std::string at;  ///< Empty: now.
  bool json = false;
};

struct CheckOptions {
  DocumentOptions document;
  bool strict = false;  ///< Warnings count as errors.
  bool fix = false;     ///< Corrects digests and file names first.
};

struct PublishOptions {
  DocumentOptions document;
  std::string to;       ///< A folder, ssh:HOST:FOLDER, or command:LINE.
  std::string base;     ///< The site's address; empty to keep the one of each page.
  std::string lasting;  ///< A folder of files that keep their addresses; empty for none.
  std::string record;   ///< Empty: "published" beside the document.
  bool strict = false;
  bool rollback = false;
};

struct ExplainOptions {
  DocumentOptions document;
  std::string scene;
  std::uint64_t sceneType = 0;
  std::int32_t channel = 1;
};

struct NewOptions {
  std::string name = "welcome";
  std::string folder = ".";
  std::string page = "announcement";  ///< The page to start from.
  bool force = false;
};

struct PreviewOptions {
  std::string target;  ///< A page file or an address.
  std::string kind;    ///< Empty: ordinary, or with a matrix all.
  std::string size;    ///< WIDTHxHEIGHT; empty for the whole screen.
  std::string theme;
  int scale = 0;  ///< 0: the desktop's scale.
  std::string screenshot;
  std::string matrix;  ///< The sheet to write.
  bool watch = false;
  bool json = false;
};

}  // namespace zovk::tool
