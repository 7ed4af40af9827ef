#include "serial/debugger/panels/frmRatePanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/text.h"

namespace touch {

using namespace std::chrono_literals;

/// How many intervals between reports are how long: one bar for each width.
class RateHistogram final : public QWidget {
 public:
  RateHistogram() {
    setObjectName("rateHistogram");
    setMinimumHeight(isSmallScreen() ? 24 : 56);
    setToolTip(
        frmRatePanel::tr(
            "How many intervals from one report to the next are how long; a bar for every %1 "
            "ms, the last one also for longer ones")
            .arg(IntervalEvidence::bucketWidth / 1ms));
    show(std::nullopt);
  }
  void show(const std::optional<IntervalEvidence>& evidence) {
    evidence_ = evidence;
    QStringList counts;
    for (std::size_t i = 0; evidence && i < evidence->histogram.size(); ++i) {
      if (evidence->histogram[i] == 0) continue;
      counts.append(frmRatePanel::tr("from %1 ms: %2")
                        .arg(static_cast<int>(i) * (IntervalEvidence::bucketWidth / 1ms))
                        .arg(evidence->histogram[i]));
    }
    presentAsGraphic(
        *this, frmRatePanel::tr("Intervals between reports"),
        counts.isEmpty() ? frmRatePanel::tr("No stroke has been measured.") : counts.join(", "));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (!evidence_) return;
    const auto& counts = evidence_->histogram;
    const double most =
        static_cast<double>(std::max<std::size_t>(1, *std::ranges::max_element(counts)));
    const double step = static_cast<double>(width()) / static_cast<double>(counts.size());
    const int textHeight = fontMetrics().height();
    const double room = height() - textHeight;
    for (std::size_t i = 0; i < counts.size(); ++i) {
      const double left = step * static_cast<double>(i);
      if (counts[i] > 0) {
        const double size = std::max(2.0, room * static_cast<double>(counts[i]) / most);
        painter.fillRect(QRectF(left + 1, room - size, step - 2, size),
                         palette().color(QPalette::Highlight));
      }
      constexpr std::size_t labelled = 5;
      if (i % labelled == 0) {
        const auto milliseconds = static_cast<int>(i) * (IntervalEvidence::bucketWidth / 1ms);
        const QString text =
            i == 0 ? frmRatePanel::tr("%1 ms").arg(milliseconds) : QString::number(milliseconds);
        if (left + 1 + fontMetrics().horizontalAdvance(text) > width()) continue;
        painter.drawText(QPointF(left + 1, height() - 3), text);
      }
    }
  }

 private:
  std::optional<IntervalEvidence> evidence_;
};

frmRatePanel::frmRatePanel(QWidget* parent)
    : QWidget(parent), evidence_(new QLabel), histogram_(new RateHistogram) {
  evidence_->setObjectName("lblEvidence");
  evidence_->setWordWrap(isSmallScreen());
  evidence_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* const facts = new QVBoxLayout(this);
  facts->setContentsMargins(0, 0, 0, 0);
  facts->addWidget(evidence_);
  facts->addWidget(histogram_, 1);
  hide();
}

void frmRatePanel::show(const ReceiveMode& mode, bool withRate) {
  const auto& stroke = mode.lastStroke();
  QStringList lines;
  for (const std::string& line : evidenceLines(stroke.value_or(StrokeRate{}), mode.ceiling()))
    lines.append(shownText(line));
  if (stroke && withRate) {
    const auto said = rateLines(*stroke);
    lines.prepend(shownText(said[2] + "    " + said[1] + "    " + said[0]));
  }
  if (const auto& [rate, strokes] = mode.meanRate(); strokes > 1) {
    lines.append(tr("Mean of %1 strokes, while touched: %2 reports per second")
                     .arg(strokes)
                     .arg(locale().toString(rate, 'f', 2)));
  }
  if (!stroke) {
    lines.prepend(mode.isReceiving() ? tr("Draw one stroke on the panel.")
                                     : tr("Press \"Receive\", then draw one stroke."));
  }
  const QString text = lines.join('\n');
  if (text == evidence_->text()) return;
  evidence_->setText(text);
  histogram_->show(stroke ? stroke->evidence : std::nullopt);
}

}  // namespace touch
