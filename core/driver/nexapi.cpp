#include "core/driver/nexapi.h"

#include <array>
#include <bit>
#include <cstring>
#include <string_view>

#include "support/text/language.h"

namespace touch {

namespace {

template <typename... Arguments>
constexpr std::size_t argumentCount(std::int32_t (Driver::*)(Arguments...)) {
  return sizeof...(Arguments);
}

/// Under its name, or under that with which compilers for 32-bit Windows decorate __stdcall: "@"
/// and four bytes for each argument. Makers ship both kinds.
void* exported(const SharedLibrary& library, const char* name, std::size_t arguments) {
  if (void* const address = library.symbol(name)) return address;
  const std::string decorated = name + ('@' + std::to_string(4 * arguments));
  return library.symbol(decorated.c_str());
}

/// Points `function` at the export called `name`, or adds the name to `missing`.
template <typename Function>
void bindOperation(const SharedLibrary& library, const char* name, std::size_t arguments,
                   Function& function, std::vector<std::string_view>& missing) {
  if (void* const address = exported(library, name, arguments)) {
    function = std::bit_cast<Function>(address);
  } else {
    missing.emplace_back(name);
  }
}

// Part of the contract, and called by nobody.
constexpr std::string_view neverNeeded = "DisableTouchRePort";

constexpr const char* simulationExport = "NexapiSimulate";
constexpr std::size_t simulationArguments = 3;
constexpr std::size_t longestSimulatedAnswer = 512;

}  // namespace

bool NexapiDriver::isSimulated() const {
  return exported(library_, simulationExport, simulationArguments) != nullptr;
}

Result<std::string, std::string> NexapiDriver::simulate(const std::string& request) {
  using Function = std::int32_t(NEXAPI_CALL*)(const char*, char*, std::int32_t);
  void* const address = exported(library_, simulationExport, simulationArguments);
  if (address == nullptr) return Driver::simulate(request);
  std::array<char, longestSimulatedAnswer> answer{};
  const bool done = std::bit_cast<Function>(address)(request.c_str(), answer.data(),
                                                     std::int32_t{longestSimulatedAnswer}) != 0;
  std::string text(answer.data(), strnlen(answer.data(), answer.size()));
  if (!done) return tl::unexpected(std::move(text));
  return text;
}

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
  bindOperation(*library, #name, argumentCount(&Driver::name), functions.name, missing);
  NEXAPI_OPERATIONS(TOUCH_BIND)
#undef TOUCH_BIND
  if (missing.size() == driverOperations.size()) {
    return tl::unexpected(BindError{
        shownName, say("driver", "it has none of a touch driver's operations"), library->path()});
  }
  std::erase(missing, neverNeeded);
  return std::unique_ptr<NexapiDriver>(
      new NexapiDriver(std::move(*library), functions, std::move(missing), state));
}

}  // namespace touch
