#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/controller/controller_model.h"
#include "simulator/panel/measured_panel.h"
#include "support/result.h"

namespace touch::simulator {

/// A controller and its panel as they were described in words. What was not said is as in the
/// bundled controller with the same link.
class DescribedController {
 public:
  /// Refers to this object.
  const ControllerModel& model() const { return model_; }

 private:
  friend class Description;
  std::string name_ = "RS232 DEVICE 1";
  std::string identity_, unitType_, queryReply_;
  std::vector<FactoryWord> words_;
  MeasuredPanel panel_;
  ControllerModel model_;
};

/// Puts a controller together from one property at a time:
///
///   name TEXT                 as the driver lists it, with "RS232" or "USB" in it
///   identity TEXT             answer to "OI", at most 8 characters
///   unit-type TEXT            answer to "UT", at most 8 characters
///   query TEXT                answer to "Uu", at most 10 characters
///   word ADDRESS VALUE        a parameter word, in hexadecimal digits
///   setting NAME VALUE        one of the driver's, by the names that the programs have for them
///   reports on                "off": touches are not reported
///   rate NUMBER               reports a second
///   noise X Y                 standard deviation of a report, in fractions of the panel
///   drift X Y                 by which reports wander in a second
///   directions A B C D E F    x is reported as A x + B y + C, y as D x + E y + F
///   dead LEFT TOP RIGHT BOTTOM  a rectangle that feels no touch; again for each
///   error-x columns X ...     the error to the right is known at these x, and
///   error-x row Y ERROR ...   at this y is as much at each of them; again for each row
///   error-y ...               the same for the error downwards
///
/// While its calibration words are those that were said, the panel reports as described.
class Description {
 public:
  static constexpr std::size_t longestLine = 4096;
  static constexpr std::size_t mostLines = 5000;

  Description();
  /// Takes a property; else says why it is refused, and is as before.
  Result<void, std::string> add(std::string_view line);
  /// The controller; else what is missing.
  Result<std::unique_ptr<const DescribedController>, std::string> finish() &&;

 private:
  struct Property;
  static const std::vector<Property>& properties();

  std::unique_ptr<DescribedController> described_;
  PointerSettings settings_;
  bool reports_ = true;
  double rate_ = 100;
  std::size_t lines_ = 0;
};

}  // namespace touch::simulator
