#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

#include "logging/ZPLogger.h"
#include "storage/DigestCache.h"
#include "storage/TextCache.h"
#include "support/SharedInstance.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Owner of the system's files: the internal directory, a private cache below the home directory,
/// and the read-only resource bundle; beside them the key-value settings. One object per process.
///
/// Any thread. Two writers of one file are not put in order: whole-file writes are atomic, appends
/// are not. An empty name, path or key counts as missing. Nothing throws: an operation that cannot
/// do its work writes one error line and returns false, an empty text or nothing, and leaves its
/// out-parameters (which may be null) untouched.
class ZOVKPopupFileManager {
 public:
  /// The one object, made on first use; null when there is no platform (not set up, or shut down).
  static ZOVKPopupFileManager* sharedInstance();
  static ZOVKPopupFileManager* sharedInstanceSynch();
  static ZOVKPopupFileManager* sharedInstanceNoSynch();
  static ZOVKPopupFileManager* allocWithZone();
  /// Drops the object; nobody may be using it. The next access makes a fresh one.
  static void purgeSharedInstance();
  ZOVKPopupFileManager* copyWithZone() { return this; }

  explicit ZOVKPopupFileManager(std::shared_ptr<Platform> platform);
  /// Names the internal directory and makes it when it is not there.
  void init();

  const std::string& getInternalFileRootPath() const { return filePath_; }
  std::string getInternalFilePath(const std::string& fileName) const;
  /// The resource bundle; null when the host ships none.
  std::shared_ptr<const Bundle> getResourceBundle();
  /// The resource bundle's info dictionary; null without a bundle. Lives as long as this object.
  const boost::json::object* getResourceInfo();
  std::string getResourceFilePath(const std::string& fileName);

  bool readInternalFile(const std::string& fileName, std::string* filePath, std::string* fileData);
  bool readResourceFile(const std::string& fileName, std::string* filePath, std::string* fileData);
  /// Writes a file of the internal directory. With `append`, a file that exists gets a "," and the
  /// data, unless it already holds the data somewhere.
  bool saveInternalFile(const std::string& fileName, std::optional<std::string_view> fileData,
                        bool append);

  // The same questions about many files are asked with one glance, each file then being looked at
  // once; without one, it is looked at anew.

  bool fileExistAtPath(const std::string& path, FileGlance* glance = nullptr) const;
  /// Whether the file is UTF-8 text and holds `text` somewhere.
  bool textExistInFile(const std::optional<std::string>& text, const std::string& filePath,
                       FileGlance* glance = nullptr);
  /// 32 lower-case hexadecimal digits, or empty. A file that has not changed is not read again.
  std::string getFileMD5(const std::string& filePath, FileGlance* glance = nullptr);
  FileGlance newGlance() const { return FileGlance(platform_->files); }
  /// Removes everything in the internal directory whose relative path is not contained in
  /// `keepList`; without a list, everything.
  void deleteInternalFileWithout(const std::optional<std::string>& keepList);

  /// The stored text, or empty.
  std::string valueForKey(const std::string& key) const;
  /// Stores a text, on disk when this returns; an empty or absent one removes the key.
  void saveValue(const std::optional<std::string>& value, const std::string& key);
  /// The install identifier, fixed at the first call; absent while the device has none to give.
  std::optional<std::string> getUUID();

 private:
  friend class SharedInstance<ZOVKPopupFileManager>;
  using Shared = SharedInstance<ZOVKPopupFileManager>;
  static std::shared_ptr<ZOVKPopupFileManager> make();

  bool readWholeFile(const DebugLog& debug, const std::string& fileName,
                     const std::string& fullPath, std::string* filePath,
                     std::string* fileData) const;
  bool staysInside(const std::string& fullPath) const;
  bool appendRecord(const std::string& fileName, const std::string& fullPath,
                    std::string_view record);
  bool replaceFile(const std::string& fileName, const std::string& fullPath,
                   std::string_view bytes);

  std::shared_ptr<Platform> platform_;
  std::string filePath_;
  DigestCache digests_;
  TextCache texts_;
  Mutex mutex_;
  std::shared_ptr<const Bundle> rescBundle_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
