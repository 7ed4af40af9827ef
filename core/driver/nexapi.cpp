#include "core/driver/nexapi.h"

#include <bit>
#include <string_view>

namespace touch {

namespace {

/// Points `function` at the export called `name`, or adds the name to `missing`.
template <typename Function>
void bindOperation(const SharedLibrary& library, const char* name, Function& function,
                   std::vector<std::string_view>& missing) {
  if (void* const address = library.symbol(name)) {
    function = std::bit_cast<Function>(address);
  } else {
    missing.emplace_back(name);
  }
}

// Part of the contract, and called by nobody.
constexpr std::string_view neverNeeded = "DisableTouchRePort";

}  // namespace

Result<std::unique_ptr<NexapiDriver>, BindError> NexapiDriver::bind(
    const std::optional<std::filesystem::path>& path) {
  const std::string shownName = path ? path->string() : makersLibrary;
  std::error_code failed;
  // Windows finds a library's own libraries beside it only when its path has the system's own
  // separators.
  const auto file =
      path ? std::filesystem::absolute(*path, failed).make_preferred() : std::filesystem::path();
  if (failed) return tl::unexpected(BindError{shownName, failed.message()});
  // A library runs code of its own as it is loaded, be it of any use or not.
  const auto state = std::make_shared<const ProcessState>();
  auto library = path ? SharedLibrary::loadPath(file) : SharedLibrary::loadNamed(makersLibrary);
  state->restore();
  if (!library) return tl::unexpected(BindError{shownName, library.error()});

  Functions functions;
  std::vector<std::string_view> missing;
#define TOUCH_BIND(name, parameters, arguments) \
  bindOperation(*library, #name, functions.name, missing);
  NEXAPI_OPERATIONS(TOUCH_BIND)
#undef TOUCH_BIND
  if (missing.size() == operationCount) {
    return tl::unexpected(BindError{
        shownName, say("driver", "it has none of a touch driver's operations"), library->path()});
  }
  std::erase(missing, neverNeeded);
  return std::unique_ptr<NexapiDriver>(
      new NexapiDriver(std::move(*library), functions, std::move(missing), state));
}

}  // namespace touch
