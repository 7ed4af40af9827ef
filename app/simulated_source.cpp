#include "app/simulated_source.h"

#include <cstdio>
#include <system_error>
#include <utility>

#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

Result<std::shared_ptr<const commission::Replay>> replayNamed(const std::filesystem::path& path,
                                                              const std::string& program) {
  const auto source = commission::readSource(path);
  if (!source) return tl::unexpected(source.error());
  auto replay = std::make_shared<const commission::Replay>(commission::replayOf(*source));
  std::string list;
  for (const std::string& lacking : replay->unknown)
    list.append(list.empty() ? "" : "; ").append(lacking);
  if (!list.empty()) {
    const std::string text =
        filled(say("commission", "%1 leaves open: %2. There the simulation is as usual."),
               {utf8Of(path), list});
    std::fprintf(stderr, "%s: %s\n", program.c_str(), printable(text).c_str());
  }
  return replay;
}

Status readSimulatedSource(Options& options, const std::string& program) {
  if (!options.simulateFrom) return {};
  auto replay = replayNamed(*options.simulateFrom, program);
  if (!replay) return tl::unexpected(replay.error());
  options.replay = std::move(*replay);
  return {};
}

Result<commission::SourceRecordings> recordingsOf(
    const std::optional<std::filesystem::path>& source) {
  return source ? commission::SourceRecordings::of(*source) : commission::SourceRecordings();
}

Result<std::filesystem::path> recordingNamed(const std::string& name,
                                             commission::SourceRecordings& recordings) {
  const std::filesystem::path file = absolutePathNamed(name);
  std::error_code unknown;
  if (std::filesystem::exists(file, unknown) || !recordings.has(name)) return file;
  return recordings.file(name);
}

Result<void, std::string> become(Driver& driver, const commission::Replay& replay) {
  for (const std::string& property : replay.properties)
    if (auto taken = driver.simulate("become " + property); !taken)
      return tl::unexpected(std::move(taken.error()));
  auto done = driver.simulate("become done");
  if (!done) return tl::unexpected(std::move(done.error()));
  return {};
}

}  // namespace touch
