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

/// Owns the system's files: the internal directory, which is a private cache below the home
/// directory, and the read-only resource bundle. It also has the key-value settings. One object per
/// process.
///
/// Any thread. The order of two writers of one file is not fixed: whole-file writes are atomic,
/// appends are not. An empty name, path or key counts as missing. Nothing throws. An operation that
/// fails writes one error line, returns false, an empty text or nothing, and leaves its
/// out-parameters (which may be null) unchanged.
class ZOVKPopupFileManager {
 public:
  /// Returns the shared object and makes it on first use; null if there is no platform (not set up,
  /// or shut down).
  static ZOVKPopupFileManager* sharedInstance();
  static ZOVKPopupFileManager* sharedInstanceSynch();
  static ZOVKPopupFileManager* sharedInstanceNoSynch();
  static ZOVKPopupFileManager* allocWithZone();
  /// Drops the shared object. Nobody may be using it. The next access makes a new one.
  static void purgeSharedInstance();
  ZOVKPopupFileManager* copyWithZone() { return this; }

  explicit ZOVKPopupFileManager(std::shared_ptr<Platform> platform);
  /// Sets the internal directory, and makes it if it does not exist.
  void init();

  const std::string& getInternalFileRootPath() const { return filePath_; }
  std::string getInternalFilePath(const std::string& fileName) const;
  /// Returns the resource bundle; null if the host ships none.
  std::shared_ptr<const Bundle> getResourceBundle();
  /// Returns the resource bundle's info dictionary; null without a bundle. It lives as long as this
  /// object.
  const boost::json::object* getResourceInfo();
  std::string getResourceFilePath(const std::string& fileName);

  bool readInternalFile(const std::string& fileName, std::string* filePath, std::string* fileData);
  bool readResourceFile(const std::string& fileName, std::string* filePath, std::string* fileData);
  /// Writes a file of the internal directory. With `append`, an existing file gets a "," and the
  /// data, unless it already contains the data.
  bool saveInternalFile(const std::string& fileName, std::optional<std::string_view> fileData,
                        bool append);

  // Questions about many files should share one glance, which examines each file once. Without a
  // glance the file is examined again.

  bool fileExistAtPath(const std::string& path, FileGlance* glance = nullptr) const;
  /// Returns whether the file is UTF-8 text and contains `text`.
  bool textExistInFile(const std::optional<std::string>& text, const std::string& filePath,
                       FileGlance* glance = nullptr);
  /// Returns 32 lower-case hexadecimal digits, or an empty text. A file that has not changed is not
  /// read again.
  std::string getFileMD5(const std::string& filePath, FileGlance* glance = nullptr);
  FileGlance newGlance() const { return FileGlance(platform_->files); }
  /// Removes everything in the internal directory whose relative path does not occur in `keepList`;
  /// without a list, everything.
  void deleteInternalFileWithout(const std::optional<std::string>& keepList);

  /// Returns the stored text, or an empty one.
  std::string valueForKey(const std::string& key) const;
  /// Stores a text. It is on disk when this returns. An empty or absent one removes the key.
  void saveValue(const std::optional<std::string>& value, const std::string& key);
  /// Returns the install identifier, which is fixed at the first call; nothing while the device has
  /// none.
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
