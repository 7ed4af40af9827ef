#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/driver/bound_driver.h"
#include "support/process_state.h"
#include "support/result.h"

namespace touch {

/// A shared library, loaded until destroyed.
class SharedLibrary {
 public:
  /// By full path, or by the name that the platform's loader and this program's own folder know it
  /// by; never from the current folder. The error is the platform's own words.
  static Result<SharedLibrary, std::string> loadPath(const std::filesystem::path& path);
  static Result<SharedLibrary, std::string> loadNamed(const std::string& name);

  /// The address of an exported function, or null.
  void* symbol(const char* name) const;
  /// Where it was loaded from.
  const std::filesystem::path& path() const { return path_; }

 private:
  struct Unload {
    void operator()(void* library) const;
  };
  SharedLibrary(void* library, std::filesystem::path path)
      : library_(library), path_(std::move(path)) {}

  std::unique_ptr<void, Unload> library_;
  std::filesystem::path path_;
};

/// To be called first of all: from then on no library is loaded from the current folder or from
/// PATH, whoever loads it.
void trustOwnFoldersAlone();

/// The folder that holds the running program; empty when the system does not tell.
std::filesystem::path programFolder();

/// The file of a library called `name` that lies where this program's own folders are searched for
/// it: it goes before those of the system.
std::optional<std::filesystem::path> ownLibrary(const std::string& name);

/// Where a library is looked for by its name, in words: folders of this program first.
std::string librarySearchPlaces();

/// The file name of a shared library called `name` on this platform: "libname.so", "name.dll".
std::string libraryFileName(const std::string& name);

/// The touch driver in a shared library: every call goes straight to the function of the same name.
/// The call of one that the library lacks throws MissingOperation. What the library changes in the
/// process as it is loaded or opens a controller is put right.
class NexapiDriver final : public BoundDriver {
 public:
  /// Binds the library at `path`, or, without one, the maker's `nexapi` where the platform's loader
  /// finds it. A library that lacks some of the 36 operations is bound all the same; one that has
  /// none is no touch driver.
  static Result<std::unique_ptr<NexapiDriver>, BindError> bind(
      const std::optional<std::filesystem::path>& path);

  const std::filesystem::path& path() const override { return library_.path(); }
  bool isSimulated() const override;
  Result<std::string, std::string> simulate(const std::string& request) override;
  /// A function that the library exports beside the 36, or null.
  void* extraExport(const char* name) const { return library_.symbol(name); }

  std::vector<std::string_view> missing() const override { return missing_; }

#define TOUCH_FORWARD(name, parameters, arguments)    \
  std::int32_t name parameters override {             \
    require(#name, functions_.name != nullptr);       \
    return checked(#name, functions_.name arguments); \
  }
  NEXAPI_OPERATIONS(TOUCH_FORWARD)
#undef TOUCH_FORWARD

 private:
  struct Functions {
#define TOUCH_POINTER(name, parameters, arguments) \
  std::int32_t(NEXAPI_CALL* name) parameters = nullptr;
    NEXAPI_OPERATIONS(TOUCH_POINTER)
#undef TOUCH_POINTER
  };

  NexapiDriver(SharedLibrary library, const Functions& functions,
               std::vector<std::string_view> missing, std::shared_ptr<const ProcessState> state)
      : library_(std::move(library)),
        functions_(functions),
        missing_(std::move(missing)),
        state_(std::move(state)) {}

  /// Drivers set up what they need when they open a controller, and at times more than is theirs.
  std::int32_t checked(std::string_view operation, std::int32_t result) const {
    if (operation == "OpenController") state_->restore();
    return result;
  }

  void require(std::string_view operation, bool there) const {
    if (!there) throw MissingOperation(operation);
    // What could not be closed again is not opened: it is closed where nothing can be thrown any
    // more.
    if (operation == "OpenController")
      require("CloseController", functions_.CloseController != nullptr);
  }

  SharedLibrary library_;
  Functions functions_;
  std::vector<std::string_view> missing_;
  std::shared_ptr<const ProcessState> state_;  ///< from before the library was loaded
};

}  // namespace touch
