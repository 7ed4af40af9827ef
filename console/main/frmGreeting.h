#pragma once

#include <QGroupBox>
#include <cstdint>
#include <functional>

namespace touch {

/// What somebody who meets the program may want to do first. A card of the first page: whoever
/// knows the way passes it by.
class frmGreeting final : public QGroupBox {
  Q_OBJECT

 public:
  enum class Choice : std::uint8_t { calibrate, prove, talk, notNow };

  /// `choose` is told once the press is through, so it may remove this.
  explicit frmGreeting(const std::function<void(Choice)>& choose);
};

}  // namespace touch
