#include "serial/debugger/panels/frmLinePanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <span>

#include "ui/controls/finger_style.h"

namespace touch {

frmLinePanel::frmLinePanel(QWidget* parent)
    : QWidget(parent),
      use_(new QPushButton(tr("U&se these"))),
      dtr_(new QCheckBox("DTR")),
      rts_(new QCheckBox("RTS")),
      break_(new QPushButton(tr("Send brea&k"))),
      wires_(new QLabel),
      counters_(new QLabel) {
  const QString names[] = {tr("Speed"), tr("Data bits"), tr("Parity"), tr("Stop bits")};
  const char* const objects[] = {"comboSpeed", "comboDataBits", "comboParity", "comboStopBits"};
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(isSmallScreen() ? 2 : 6);
  for (int i = 0; i < 4; ++i) {
    auto* const combo = new QComboBox;
    combo->setObjectName(objects[i]);
    combo->setAccessibleName(names[i]);
    grid->addWidget(new QLabel(names[i]), 0 + i / 2 * 2, i % 2);
    grid->addWidget(combo, 1 + i / 2 * 2, i % 2);
    settings_.at(static_cast<std::size_t>(i)) = combo;
  }
  const auto [speed, dataBits, parity, stopBits] = settings_;
  for (const std::span<const int> speeds :
       {std::span<const int>(usualSpeeds), std::span<const int>(highSpeeds)})
    for (const int baud : speeds)
      speed->addItem(QString::number(baud), baud);
  for (const int bits : {5, 6, 7, 8})
    dataBits->addItem(QString::number(bits), bits);
  parity->addItem(tr("None"), static_cast<int>(Parity::none));
  parity->addItem(tr("Even"), static_cast<int>(Parity::even));
  parity->addItem(tr("Odd"), static_cast<int>(Parity::odd));
  for (const int bits : {1, 2})
    stopBits->addItem(QString::number(bits), bits);

  use_->setObjectName("cmdUseLine");
  use_->setToolTip(tr("For this port until the debugger is closed"));
  dtr_->setObjectName("checkDtr");
  rts_->setObjectName("checkRts");
  break_->setObjectName("cmdBreak");
  wires_->setObjectName("lblWires");
  counters_->setObjectName("lblCounters");
  for (QLabel* const label : {wires_, counters_})
    label->setWordWrap(true);
  grid->addWidget(use_, 4, 0);
  grid->addWidget(break_, 4, 1);
  grid->addWidget(dtr_, 5, 0);
  grid->addWidget(rts_, 5, 1);
  grid->addWidget(wires_, 6, 0, 1, 2);
  grid->addWidget(counters_, 7, 0, 1, 2);
  grid->setRowStretch(8, 1);
  for (int column : {0, 1})
    grid->setColumnStretch(column, 1);

  connect(use_, &QPushButton::clicked, this, [this] {
    const auto value = [this](std::size_t i) { return settings_.at(i)->currentData().toInt(); };
    emit settingsChosen({value(0), static_cast<Parity>(value(2)), value(1), value(3)});
  });
  connect(dtr_, &QCheckBox::clicked, this, [this](bool on) { emit switched(LineSwitch::dtr, on); });
  connect(rts_, &QCheckBox::clicked, this, [this](bool on) { emit switched(LineSwitch::rts, on); });
  connect(break_, &QPushButton::clicked, this, &frmLinePanel::breakRequested);
}

void frmLinePanel::show(const LineView& view, bool possible) {
  // What the user is choosing just now stays.
  if (shown_ != view.settings) chooseSettings(view.settings);
  shown_ = view.settings;
  for (QWidget* const control : std::initializer_list<QWidget*>{use_, break_})
    control->setEnabled(possible);
  for (QCheckBox* const wire : {dtr_, rts_})
    wire->setEnabled(possible && view.state);
  dtr_->setChecked(view.wires.dtr);
  rts_->setChecked(view.wires.rts);
  const auto lamp = [](const char* name, bool on) {
    return QString(on ? "● %1" : "○ %1").arg(name);
  };
  wires_->setText(!view.state
                      ? tr("This port does not tell of its other wires.")
                      : QStringList{lamp("CTS", view.state->cts), lamp("DSR", view.state->dsr),
                                    lamp("DCD", view.state->dcd), lamp("RI", view.state->ri)}
                            .join("   "));
  QStringList counted{tr("Bytes sent: %1, received: %2, damaged: %3.")
                          .arg(view.sent)
                          .arg(view.received)
                          .arg(view.damaged)};
  if (view.state && view.state->faults) {
    const LineFaults& faults = *view.state->faults;
    counted.append(tr("Stop bit missing: %1, wrong parity: %2, overruns: %3, breaks: %4.")
                       .arg(faults.framing)
                       .arg(faults.parity)
                       .arg(faults.overruns)
                       .arg(faults.breaks));
  }
  counters_->setText(counted.join('\n'));
}

void frmLinePanel::chooseSettings(const LineSettings& line) {
  const int values[] = {line.baud, line.dataBits, static_cast<int>(line.parity), line.stopBits};
  for (std::size_t i = 0; i < settings_.size(); ++i)
    settings_.at(i)->setCurrentIndex(settings_.at(i)->findData(values[i]));
}

}  // namespace touch
