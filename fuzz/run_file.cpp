// Runs of commissionings, "run.json", and the sheet that is made of them.

#include "commission/run_folder.h"
#include "commission/sheet.h"
#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  using namespace commission;
  const auto read = [](auto text) { return parseRun(text, "fuzz"); };
  requireRoundTrip(textOf(bytes), read, runText);
  if (const auto run = read(textOf(bytes)))
    require(!sheetHtml(sheetOf(*run, nullptr), nullptr).empty(), "there is a sheet of every run");
}

}  // namespace touch::fuzz
