#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

#include "measure/judging/verdict.h"
#include "measure/truth/figures.h"
#include "measure/truth/trial.h"

// Prints, as Markdown, how well the measurement knows what simulated panels were told to be.

namespace {

using namespace touch::measure;

constexpr auto causes = 12;

struct Case {
  std::vector<CauseId> faults;
  std::vector<Cause> named;
};

Plan everyLine() {
  Plan plan;
  plan.rest = true;
  plan.lineSet = LineSet::full;
  return plan;
}

/// Both of a pair can show at the same time.
bool canMeet(CauseId first, CauseId second) {
  const auto isOfDirections = [](CauseId id) {
    return id == CauseId::turned || id == CauseId::swapped || id == CauseId::wires;
  };
  return first != second && !(isOfDirections(first) && isOfDirections(second));
}

/// Of ten panels three are good, four have one fault, three have two.
std::vector<CauseId> faultsOf(std::size_t number, std::mt19937& random) {
  const auto any = [&] { return static_cast<CauseId>(random() % causes); };
  const std::size_t kind = number % 10;
  if (kind < 3) return {};
  if (kind < 7) return {any()};
  for (;;) {
    const CauseId first = any();
    const CauseId second = any();
    if (canMeet(first, second)) return {first, second};
  }
}

Case tryPanel(std::size_t number, std::uint32_t seed) {
  std::mt19937 random(seed + static_cast<std::uint32_t>(number));
  const Limits limits = profiles().front().limits;
  truth::Trial trial = truth::goodPanel(random, limits);
  Case result{faultsOf(number, random), {}};
  for (const CauseId fault : result.faults)
    addFault(trial, fault, random, limits);
  result.named = analyse(record(trial, everyLine(), limits)).causes;
  return result;
}

bool isNamed(const Case& tried, CauseId id) {
  return std::ranges::find(tried.named, id, &Cause::id) != tried.named.end();
}

void printMatrix(const std::vector<Case>& cases) {
  // The last row and column are none.
  std::array<std::array<int, causes + 1>, causes + 1> matrix{};
  std::array<int, causes> beside{};
  for (const Case& tried : cases) {
    if (tried.faults.size() > 1) continue;
    const auto place = [](std::optional<CauseId> id) {
      return id ? static_cast<std::size_t>(*id) : causes;
    };
    const auto is = tried.faults.empty() ? std::nullopt : std::optional(tried.faults[0]);
    const auto named = tried.named.empty() ? std::nullopt : std::optional(tried.named[0].id);
    ++matrix[place(is)][place(named)];
    if (is && isNamed(tried, *is) && tried.named.size() > 1) ++beside[place(is)];
  }
  const auto name = [](std::size_t place) {
    return place < causes ? rowOf(static_cast<CauseId>(place)).name : std::string_view("none");
  };
  fmt::print("| the panel has | panels |");
  for (std::size_t column = 0; column <= causes; ++column)
    fmt::print(" {} |", name(column));
  fmt::print(" others named beside it |\n|---|---|");
  for (std::size_t column = 0; column <= causes; ++column)
    fmt::print("---|");
  fmt::print("---|\n");
  std::size_t row = 0;
  for (const auto& counts : matrix) {
    fmt::print("| {} | {} |", name(row), std::accumulate(counts.begin(), counts.end(), 0));
    for (const int count : counts)
      fmt::print(" {} |", count == 0 ? "" : std::to_string(count));
    fmt::print(" {} |\n", row < causes ? std::to_string(beside[row]) : "");
    ++row;
  }
}

void printShares(const std::vector<Case>& cases) {
  std::array<int, 3> panels{};
  int firstRight = 0;
  int oneOfTwo = 0;
  int bothOfTwo = 0;
  int accused = 0;
  for (const Case& tried : cases) {
    const auto& faults = tried.faults;
    ++panels[faults.size()];
    const auto right =
        std::ranges::count_if(faults, [&](CauseId id) { return isNamed(tried, id); });
    if (faults.empty()) accused += tried.named.empty() ? 0 : 1;
    if (faults.size() == 1) firstRight += right == 1 && tried.named[0].id == faults[0] ? 1 : 0;
    if (faults.size() == 2) {
      oneOfTwo += right >= 1 ? 1 : 0;
      bothOfTwo += right == 2 ? 1 : 0;
    }
  }
  const auto share = [](int part, int of) { return of > 0 ? 100.0 * part / of : 0.0; };
  fmt::print("\n| | of | right | wanted |\n|---|---|---|---|\n");
  fmt::print("| one cause, named first | {} | {:.1f} % | 95 % at least |\n", panels[1],
             share(firstRight, panels[1]));
  fmt::print("| two causes, one of them named | {} | {:.1f} % | 95 % at least |\n", panels[2],
             share(oneOfTwo, panels[2]));
  fmt::print("| two causes, both named | {} | {:.1f} % | 80 % at least |\n", panels[2],
             share(bothOfTwo, panels[2]));
  fmt::print("| a good panel accused | {} | {:.1f} % | 1 % at most |\n", panels[0],
             share(accused, panels[0]));
}

/// For who tunes: each panel that was judged wrongly.
void printMistakes(const std::vector<Case>& cases) {
  for (std::size_t number = 0; number < cases.size(); ++number) {
    const Case& tried = cases[number];
    const bool all =
        std::ranges::all_of(tried.faults, [&](CauseId id) { return isNamed(tried, id); });
    const bool first = tried.faults.size() != 1 || (all && tried.named[0].id == tried.faults[0]);
    if (all && first && !(tried.faults.empty() && !tried.named.empty())) continue;
    fmt::print(stderr, "{}: has", number);
    for (const CauseId id : tried.faults)
      fmt::print(stderr, " {}", rowOf(id).name);
    fmt::print(stderr, "; named");
    for (const Cause& cause : tried.named)
      fmt::print(stderr, " {} {:.1f},", rowOf(cause.id).name, cause.weight);
    fmt::print(stderr, "\n");
  }
}

constexpr int triedPanels = 100;

void printFigures(std::uint32_t seed) {
  struct Row {
    double told = 0, mean = 0, worst = 0;
    int held = 0;
  };
  std::vector<std::string_view> names;
  std::vector<Row> rows;
  for (std::uint32_t panel = 0; panel < triedPanels; ++panel) {
    const auto figures = truth::compareFigures(seed + panel);
    rows.resize(figures.size());
    names.clear();
    for (std::size_t i = 0; i < figures.size(); ++i) {
      names.push_back(figures[i].figure);
      rows[i].told = figures[i].told;
      rows[i].mean += figures[i].measured / triedPanels;
      rows[i].worst = std::max(rows[i].worst, std::abs(figures[i].measured - figures[i].told));
      rows[i].held += figures[i].holds() ? 1 : 0;
    }
  }
  fmt::print(
      "\n| figure, mm | told | measured, mean of {} panels | farthest off | within 2 % or "
      "0.02 mm |\n|---|---|---|---|---|\n",
      triedPanels);
  for (std::size_t i = 0; i < rows.size(); ++i)
    fmt::print("| {} | {:.3f} | {:.3f} | {:.3f} | {} |\n", names[i], rows[i].told, rows[i].mean,
               rows[i].worst, rows[i].held);
}

void printLimits(std::uint32_t seed) {
  fmt::print(
      "\n| limit | fail, of {} panels 5 % beyond it | pass, of {} panels 5 % within it |\n"
      "|---|---|---|\n",
      triedPanels, triedPanels);
  for (const Length limit : truth::triedLimits) {
    int failed = 0;
    int passed = 0;
    for (std::uint32_t panel = 0; panel < triedPanels; ++panel) {
      failed += truth::judgeNear(limit, 1.05, seed + panel) == Outcome::fail ? 1 : 0;
      passed += truth::judgeNear(limit, 0.95, seed + panel) == Outcome::pass ? 1 : 0;
    }
    fmt::print("| {} | {} | {} |\n", nameOf(limit).words, failed, passed);
  }
}

std::uint32_t numberOf(std::string_view text) {
  std::uint32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    fmt::print(stderr, "usage: measure_causes SEED PANELS\n");
    return 2;
  }
  std::vector<Case> cases;
  const std::uint32_t seed = numberOf(argv[1]);
  for (std::size_t number = 0; number < numberOf(argv[2]); ++number)
    cases.push_back(tryPanel(number, seed));
  printMatrix(cases);
  printShares(cases);
  printFigures(seed);
  printLimits(seed);
  printMistakes(cases);
}
