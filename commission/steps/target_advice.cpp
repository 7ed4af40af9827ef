#include "commission/steps/target_advice.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"
#include "measure/report/words.h"
#include "support/text/language.h"

namespace touch::commission {

namespace {

namespace fs = std::filesystem;

struct UseAdvice {
  std::string_view use;
  int targets;
  const char* why;  ///< said in the context "commission"
};
constexpr UseAdvice byUse[] = {
    {"industrial", 5,
     marked("commission", "5 targets suit most panels: they also correct a tilted one.")},
    {"kiosk", 3,
     marked("commission",
            "3 targets are enough for large buttons, and also correct a tilted "
            "panel.")},
    {"signature", 9,
     marked("commission", "9 targets are the most accurate: writing with a pen needs that.")},
};

TargetAdvice adviceOf(std::string_view use) {
  const auto found = std::ranges::find(byUse, use, &UseAdvice::use);
  const UseAdvice& advice = found == std::end(byUse) ? byUse[0] : *found;
  return {advice.targets, say("commission", advice.why)};
}

/// A run of the same panel, and when it began.
struct EarlierRun {
  std::string began;
  RunFolder folder;
};

/// The last one first. Whoever takes a run up hears of those that cannot be read.
std::vector<EarlierRun> runsOf(const std::string& serialNumber, const fs::path& base) {
  std::vector<EarlierRun> runs;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(base, failed)) {
    auto folder = RunFolder::open(entry.path());
    if (!folder) continue;
    const auto run = folder->run();
    if (run && run->panel.serialNumber == serialNumber)
      runs.push_back({run->began, std::move(*folder)});
  }
  std::ranges::sort(runs, std::greater{}, &EarlierRun::began);
  return runs;
}

std::optional<TargetAdvice> adviceOf(const EarlierRun& earlier) {
  const auto measurement = earlier.folder.measurement();
  if (!measurement || !*measurement) return std::nullopt;
  const auto advice = measure::analyse(**measurement).advice;
  if (!advice) return std::nullopt;
  const auto best = std::ranges::find(advice->reaches, advice->take, &measure::Reach::targets);
  return TargetAdvice{
      advice->take,
      filled(say("commission",
                 "%1 targets suit this panel best. According to its measurement of %2, touches "
                 "then miss by at most %3."),
             {std::to_string(advice->take), periodText(earlier.began, {}),
              measure::lengthText(best->worst, (*measurement)->size)})};
}

}  // namespace

TargetAdvice adviseTargets(const fs::path& base, const Run& run) {
  if (!run.panel.serialNumber.empty())
    for (const EarlierRun& earlier : runsOf(run.panel.serialNumber, base))
      if (const auto advice = adviceOf(earlier)) return *advice;
  return adviceOf(run.use);
}

}  // namespace touch::commission
