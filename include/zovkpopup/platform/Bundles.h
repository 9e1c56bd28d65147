#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

namespace zovk {

/// A directory of resources with an info dictionary. Any thread; immutable once opened, shared by
/// its holders. A resource that is missing is absent; a missing or broken info dictionary is empty.
class Bundle {
 public:
  virtual ~Bundle() = default;
  /// Absolute path of the directory that holds the resources.
  virtual std::string resourcePath() const = 0;
  virtual const boost::json::object& infoDictionary() const = 0;
  /// The path of the resource `name.type`.
  virtual std::optional<std::string> pathForResource(const std::string& name,
                                                     const std::string& type) const = 0;
};

/// Finds bundles. Any thread; it calls nothing back, and callers share what they get. No bundle at
/// a path gives null.
class Bundles {
 public:
  virtual ~Bundles() = default;
  /// The host's own resources. Never null.
  virtual std::shared_ptr<const Bundle> mainBundle() const = 0;
  virtual std::shared_ptr<const Bundle> bundleWithPath(const std::string& path) const = 0;
};

/// The boolean value of a dictionary's entry: true, a number other than 0, or a text that starts
/// with Y, y, T, t or, after blanks, a sign and zeros, a digit from 1 to 9. Anything else is false.
bool boolValue(const boost::json::object& dictionary, std::string_view key);

}  // namespace zovk
