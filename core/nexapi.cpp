#include "core/nexapi.h"

#include <bit>

namespace touch {

namespace {

/// Points `function` at the export called `name`, or adds the name to `missing`.
template <typename Function>
void bindOperation(const SharedLibrary& library, const char* name, Function& function,
                   std::vector<std::string>& missing) {
  if (void* const address = library.symbol(name)) {
    function = std::bit_cast<Function>(address);
  } else {
    missing.emplace_back(name);
  }
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names)
    text += (text.empty() ? "" : ", ") + name;
  return text;
}

}  // namespace

Result<std::unique_ptr<NexapiDriver>, BindError> NexapiDriver::bind(
    const std::optional<std::filesystem::path>& path) {
  const std::string shownName = path ? path->string() : makersLibrary;
  std::error_code failed;
  // Windows finds a library's own libraries beside it only when its path has the system's own separators.
  const auto file =
      path ? std::filesystem::absolute(*path, failed).make_preferred() : std::filesystem::path();
  if (failed) return BindError{shownName, failed.message()};
  // A library runs code of its own as it is loaded, be it of any use or not.
  const auto state = std::make_shared<const ProcessState>();
  auto library = path ? SharedLibrary::loadPath(file) : SharedLibrary::loadNamed(makersLibrary);
  state->restore();
  if (!library) return BindError{shownName, library.error()};

  Functions functions;
  std::vector<std::string> missing;
#define TOUCH_BIND(name, parameters, arguments) \
  bindOperation(*library, #name, functions.name, missing);
  NEXAPI_OPERATIONS(TOUCH_BIND)
#undef TOUCH_BIND
  if (!missing.empty()) {
    return BindError{shownName, filled(say("core", "it lacks the operation %1"), {joined(missing)}),
                     library->path(), missing};
  }
  return std::unique_ptr<NexapiDriver>(new NexapiDriver(std::move(*library), functions, state));
}

}  // namespace touch
