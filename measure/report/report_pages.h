#pragma once

#include <optional>

#include "drawing/surface.h"
#include "measure/judging/verdict.h"
#include "measure/report/map_page.h"

namespace touch::measure {

/// A measurement with everything that follows from it.
struct Report {
  Measurement measurement;
  Analysis analysis;
  std::optional<ErrorMap> map;
  Verdict verdict;
};

Report reportOf(Measurement measurement);

/// A report on paper: what was measured on what, the verdict, causes and advice; the page of the
/// lines; the map; each figure beside its limit. Every page is as large as `mapPage` and says
/// whether the size is a guess.
class ReportPages {
 public:
  /// `report` outlives it.
  explicit ReportPages(const Report& report);
  std::size_t count() const { return pages_.size(); }
  void draw(ChartSurface& surface, std::size_t page) const;

  struct Row {
    std::string text;
    std::string measured{};
    std::string limit{};
    std::string share{};
    std::string outcome{};
    Outcome is = Outcome::pass;
    bool isHeading = false;
  };

 private:
  using Page = std::vector<Row>;  ///< none for a drawing
  const Report& report_;
  std::vector<Page> pages_;
  std::optional<std::size_t> linesAt_;
};

}  // namespace touch::measure
