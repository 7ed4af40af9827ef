#include "core/nexapi.h"

#include <bit>

namespace touch {

namespace {

constexpr const char* makersLibrary = "nexapi";

/// Points `function` at the export called `name`, or adds the name to `missing`.
template <typename Function>
void bindOperation(const SharedLibrary& library, const char* name, Function& function,
                   std::string& missing) {
  if (void* const address = library.symbol(name)) {
    function = std::bit_cast<Function>(address);
  } else {
    if (!missing.empty()) missing += ", ";
    missing += name;
  }
}

}  // namespace

Result<std::unique_ptr<NexapiDriver>, BindError> NexapiDriver::bind(
    const std::optional<std::filesystem::path>& path) {
  const std::string shownName = path ? path->string() : makersLibrary;
  std::error_code failed;
  const auto file = path ? std::filesystem::absolute(*path, failed) : std::filesystem::path();
  if (failed) return BindError{shownName, failed.message()};
  auto library = path ? SharedLibrary::loadPath(file) : SharedLibrary::loadNamed(makersLibrary);
  if (!library) return BindError{shownName, library.error()};

  Functions functions;
  std::string missing;
#define TOUCH_BIND(name, parameters, arguments) \
  bindOperation(*library, #name, functions.name, missing);
  NEXAPI_OPERATIONS(TOUCH_BIND)
#undef TOUCH_BIND
  if (!missing.empty()) return BindError{shownName, "it lacks the operation " + missing};
  return std::unique_ptr<NexapiDriver>(new NexapiDriver(std::move(*library), functions));
}

}  // namespace touch
