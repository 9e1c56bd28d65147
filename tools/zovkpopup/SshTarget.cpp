#include "zovkpopup/SshTarget.h"

#include <fmt/format.h>

#include "zovkpopup/Shell.h"

namespace zovk::tool {

std::string SshTarget::onHost(const std::string& script) const {
  return "ssh -- " + shellWord(host_) + " " + shellWord(script);
}

// Files arrive beside the site and are moved to their places whole, each in one step.
void SshTarget::upload(const Release& release) {
  const std::string script = fmt::format(
      "set -e; mkdir -p {site}; site=$(cd {site} && pwd); cd \"$site\"; mkdir -p incoming-{id}; "
      "cd incoming-{id}; tar -xpf -; "
      "find . -type d -exec mkdir -p \"$site/{{}}\" \\; ; "
      "find . -type f -exec mv -f {{}} \"$site/{{}}\" \\; ; "
      "cd \"$site\"; rm -r incoming-{id}",
      fmt::arg("site", shellWord(site_)), fmt::arg("id", release.id));
  const std::string packed = shellWord(release.folder.string() + ".tar");
  runShell(fmt::format("tar --owner=0 --group=0 -C {} -cf {} .", shellWord(release.folder.string()),
                       packed));
  runShell(onHost(script) + " <" + packed);
  runShell("rm " + packed);
}

void SshTarget::activate(const Release& release) {
  runShell(onHost(fmt::format(
      "set -e; cd {site}; test -d releases/{id}; ln -sfn releases/{id} current.unfinished; "
      "mv -T current.unfinished current",
      fmt::arg("site", shellWord(site_)), fmt::arg("id", release.id))));
}

}  // namespace zovk::tool
