#include <dlfcn.h>
#include <link.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "core/language.h"
#include "core/nexapi.h"

namespace touch {

namespace {

std::string loaderError() {
  const char* const words = dlerror();
  return words ? words : say("core", "the loader gave no reason");
}

std::filesystem::path loadedFrom(void* library) {
  link_map* map = nullptr;
  if (dlinfo(library, RTLD_DI_LINKMAP, &map) != 0 || map == nullptr) return {};
  return map->l_name;
}

/// The loader takes an empty or relative element of its search path for the current folder, where anybody may have put
/// a library of this name.
bool searchPathReachesCurrentFolder() {
  const char* const variable = std::getenv("LD_LIBRARY_PATH");
  if (variable == nullptr || *variable == '\0') return false;
  std::string_view rest = variable;
  while (true) {
    const auto end = rest.find_first_of(":;");
    if (rest.substr(0, end).empty() || rest.front() != '/') return true;
    if (end == rest.npos) return false;
    rest.remove_prefix(end + 1);
  }
}

/// Where a library may lie for this program alone.
std::array<std::filesystem::path, 2> ownFolders() {
  const auto folder = programFolder();
  return {folder, folder.parent_path() / "lib"};
}

}  // namespace

std::string librarySearchPlaces() {
  std::string places;
  for (const auto& folder : ownFolders())
    places += folder.string() + ", ";
  return places + say("core", "the folders of LD_LIBRARY_PATH and those of the system");
}

std::filesystem::path programFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

std::string libraryFileName(const std::string& name) {
  return "lib" + name + ".so";
}

Result<SharedLibrary, std::string> SharedLibrary::loadPath(const std::filesystem::path& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return loaderError();
  return SharedLibrary(library, path);
}

Result<SharedLibrary, std::string> SharedLibrary::loadNamed(const std::string& name) {
  const std::string file = libraryFileName(name);
  for (const auto& folder : ownFolders()) {
    std::error_code ignored;
    if (std::filesystem::exists(folder / file, ignored)) return loadPath(folder / file);
  }
  if (searchPathReachesCurrentFolder()) {
    return std::string(
        say("core",
            "LD_LIBRARY_PATH has an empty or relative element, which would load it from the "
            "current folder; remove that element, or name the library with --driver"));
  }
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return loaderError();
  return SharedLibrary(library, loadedFrom(library));
}

void* SharedLibrary::symbol(const char* name) const {
  return dlsym(library_.get(), name);
}

void SharedLibrary::Unload::operator()(void* library) const {
  dlclose(library);
}

}  // namespace touch
