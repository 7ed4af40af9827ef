#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "core/driver/nexapi.h"
#include "support/text/language.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

std::string loaderError() {
  const char* const words = dlerror();
  return words ? words : say("driver", "the loader gave no reason");
}

fs::path loadedFrom(void* library) {
  link_map* map = nullptr;
  if (dlinfo(library, RTLD_DI_LINKMAP, &map) != 0 || map == nullptr) return {};
  return map->l_name;
}

/// Where a library may lie for this program alone; nowhere when nobody says where the program is.
std::vector<fs::path> ownFolders() {
  const auto folder = programFolder();
  if (folder.empty()) return {};
  return {folder, folder.parent_path() / "lib"};
}

bool isOneOf(const std::vector<fs::path>& folders, const fs::path& folder) {
  std::error_code missing;
  return std::ranges::any_of(
      folders, [&](const fs::path& one) { return fs::equivalent(one, folder, missing); });
}

/// Whether an element of the loader's search path is the current folder, where anybody may have put
/// a library of this name. It is when it is empty or relative, and also by another name that leads
/// there.
bool reachesCurrentFolder(const fs::path& element) {
  if (!element.is_absolute()) return true;
  return isOneOf({"."}, element) && !isOneOf(ownFolders(), element);
}

bool searchPathReachesCurrentFolder() {
  const char* const variable = std::getenv("LD_LIBRARY_PATH");
  if (variable == nullptr || *variable == '\0') return false;
  std::string_view rest = variable;
  while (true) {
    const auto end = rest.find_first_of(":;");
    if (reachesCurrentFolder(rest.substr(0, end))) return true;
    if (end == rest.npos) return false;
    rest.remove_prefix(end + 1);
  }
}

}  // namespace

void trustOwnFoldersAlone() {
  // The loader never looks into the current folder here unless LD_LIBRARY_PATH names it, which is
  // refused.
}

std::string librarySearchPlaces() {
  std::string places;
  for (const auto& folder : ownFolders())
    places += folder.string() + ", ";
  return places + say("driver", "the folders of LD_LIBRARY_PATH and those of the system");
}

std::optional<fs::path> ownLibrary(const std::string& name) {
  for (const auto& folder : ownFolders()) {
    std::error_code ignored;
    auto file = folder / libraryFileName(name);
    if (fs::exists(file, ignored)) return file;
  }
  return std::nullopt;
}

fs::path programFolder() {
  std::error_code unknown;
  const auto folder = fs::read_symlink("/proc/self/exe", unknown).parent_path();
  return folder.is_absolute() ? folder : fs::path();
}

std::string libraryFileName(const std::string& name) {
  return "lib" + name + ".so";
}

Result<SharedLibrary, std::string> SharedLibrary::loadPath(const fs::path& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return tl::unexpected(loaderError());
  return SharedLibrary(library, path);
}

Result<SharedLibrary, std::string> SharedLibrary::loadNamed(const std::string& name) {
  if (const auto own = ownLibrary(name)) return loadPath(*own);
  if (searchPathReachesCurrentFolder()) {
    return tl::unexpected(
        say("driver",
            "LD_LIBRARY_PATH has an element that leads to the current folder; remove that element, "
            "or name the library with --driver"));
  }
  void* const library = dlopen(libraryFileName(name).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return tl::unexpected(loaderError());
  return SharedLibrary(library, loadedFrom(library));
}

void* SharedLibrary::symbol(const char* name) const {
  return dlsym(library_.get(), name);
}

void SharedLibrary::Unload::operator()(void* library) const {
  dlclose(library);
}

}  // namespace touch
