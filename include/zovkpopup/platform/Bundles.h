#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

namespace zovk {

/// A directory of resources with an info dictionary. Any thread; it does not change once opened,
/// and its holders share it. A missing resource is absent. A missing or broken info dictionary is
/// empty.
class Bundle {
 public:
  virtual ~Bundle() = default;
  /// Returns the absolute path of the directory that holds the resources.
  virtual std::string resourcePath() const = 0;
  virtual const boost::json::object& infoDictionary() const = 0;
  /// Returns the path of the resource `name.type`.
  virtual std::optional<std::string> pathForResource(const std::string& name,
                                                     const std::string& type) const = 0;
};

/// Finds bundles. Any thread; calls nothing back. Callers share the bundles. A path without a
/// bundle gives null.
class Bundles {
 public:
  virtual ~Bundles() = default;
  /// Returns the host's own resources; never null.
  virtual std::shared_ptr<const Bundle> mainBundle() const = 0;
  virtual std::shared_ptr<const Bundle> bundleWithPath(const std::string& path) const = 0;
};

/// Returns the boolean value of a dictionary's entry. True are: true, a number other than 0, a text
/// that begins with Y, y, T or t, and a text that, after blanks, a sign and zeros, has a digit from
/// 1 to 9. Everything else is false.
bool boolValue(const boost::json::object& dictionary, std::string_view key);

}  // namespace zovk
