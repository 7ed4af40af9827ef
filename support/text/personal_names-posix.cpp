#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "support/text/personal_names.h"

namespace touch {

PersonalNames personalNames() {
  PersonalNames names;
  const auto add = [&names](const char* folder) {
    std::string home = folder == nullptr ? "" : folder;
    while (home.ends_with('/'))
      home.pop_back();
    if (home.empty()) return;
    // A home that is a link goes by both names.
    std::error_code ignored;
    std::string real = std::filesystem::weakly_canonical(home, ignored).string();
    if (real.size() > 1 && real != home) names.homeFolders.push_back(std::move(real));
    names.homeFolders.push_back(std::move(home));
  };
  add(std::getenv("HOME"));
  // With sudo they differ.
  if (const passwd* const user = getpwuid(geteuid())) add(user->pw_dir);
  if (const passwd* const user = getpwuid(getuid())) add(user->pw_dir);
  if (const char* const caller = std::getenv("SUDO_USER"))
    if (const passwd* const user = getpwnam(caller)) add(user->pw_dir);
  utsname system{};
  if (uname(&system) == 0) names.host = system.nodename;
  return names;
}

}  // namespace touch
