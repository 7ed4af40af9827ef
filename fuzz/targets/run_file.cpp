// Runs of commissionings, "run.json", the sheet that is made of them, and the controller that is
// simulated from them.

#include "commission/replay/replay.h"
#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"
#include "fuzz/target.h"
#include "simulator/controller/described_controller.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  using namespace commission;
  const auto read = [](auto text) { return parseRun(text, "fuzz"); };
  requireRoundTrip(textOf(bytes), read, runText);
  const auto run = read(textOf(bytes));
  if (!run) return;
  require(!sheetHtml(sheetOf(*run, nullptr), nullptr).empty(), "there is a sheet of every run");
  simulator::Description description;
  for (const std::string& property : replayOf({*run, std::nullopt}).properties)
    require(description.add(property).has_value(), "the simulator takes what a run tells");
  require(std::move(description).finish().has_value(), "there is a controller of every run");
}

}  // namespace touch::fuzz
