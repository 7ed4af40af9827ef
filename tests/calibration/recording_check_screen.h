#pragma once

#include "calibration/check.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// Remembers what a check says and how it ended.
class RecordingCheckScreen final : public CheckScreen, private Surface {
 public:
  Surface& surface() override { return *this; }
  void tell(const std::string& text) override { told.push_back(text); }
  void showResidual(const Residual& residual) override { residuals.push_back(residual); }
  void showTimeBar(float width) override { barWidth = width; }
  void allow(bool keep, bool putBack) override { allowed = {keep, putBack}; }
  void ended(const CheckResult& result) override { results.push_back(result); }

  Lines told;
  std::vector<Residual> residuals;
  float barWidth = 0;
  std::pair<bool, bool> allowed;
  std::vector<CheckResult> results;

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}
};

}  // namespace touch::test
