#include "console/pins/frmPinDefine.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "support/gate.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/controls/status_line.h"
#include "ui/guide/help.h"
#include "ui/style/colours.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int highestByte = 255;

/// Problems; the others come when these are mended.
int mostTold() {
  return isSmallScreen() ? 1 : 3;
}

/// Where a wire leaves the sensor: the cell of a grid of 3 x 3 around it.
struct Place {
  int row;
  int column;
};
constexpr std::array<Place, 4> fourWirePlaces = {{{1, 2}, {1, 0}, {0, 1}, {2, 1}}};
constexpr std::array<Place, 5> fiveWirePlaces = {{{0, 0}, {0, 2}, {2, 0}, {2, 2}, {2, 1}}};

Place placeOf(SensorType type, std::size_t wire) {
  return type == SensorType::fourWire ? fourWirePlaces[wire] : fiveWirePlaces[wire];
}

}  // namespace

/// The sensor in the middle and a line to each wire's controls around it.
class SensorDrawing final : public QWidget {
 public:
  SensorDrawing() : grid_(new QGridLayout(this)) {
    grid_->setSpacing(isSmallScreen() ? 8 : 14);
    for (const int cell : {0, 1, 2}) {
      grid_->setRowStretch(cell, 1);
      grid_->setColumnStretch(cell, 1);
    }
    sensor_->setMinimumSize(isSmallScreen() ? 50 : 100, isSmallScreen() ? 40 : 60);
    grid_->addWidget(sensor_, 1, 1);
  }

  void place(QWidget* wire, Place place) {
    grid_->removeWidget(wire);
    grid_->addWidget(wire, place.row, place.column);
  }
  void mark(std::vector<const QWidget*> wrong) {
    wrong_ = std::move(wrong);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect sheet = sensor_->geometry();
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
    for (const auto* const wire : findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (wire->isHidden()) continue;
      // From edge to edge: the nearest points of the two.
      const auto nearest = [](const QRect& area, const QPoint& to) {
        return QPoint(std::clamp(to.x(), area.left(), area.right()),
                      std::clamp(to.y(), area.top(), area.bottom()));
      };
      const QPoint end = nearest(wire->geometry(), sheet.center());
      painter.drawLine(nearest(sheet, end), end);
      // Around the wire: a frame of its own would move everything.
      if (std::ranges::find(wrong_, wire) == wrong_.end()) continue;
      constexpr int apart = 3;
      painter.save();
      painter.setPen(QPen(wrongColour(), 3));
      painter.drawRect(wire->geometry().adjusted(-apart, -apart, apart, apart));
      painter.restore();
    }
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(sheet, 6, 6);
    painter.drawText(sheet, Qt::AlignCenter, frmPinDefine::tr("Sensor"));
  }

 private:
  QColor wrongColour() const { return coloursOf(palette()).problem; }

  QGridLayout* grid_;
  std::vector<const QWidget*> wrong_;
  QWidget* sensor_ = new QWidget(this);
};

frmPinDefine::frmPinDefine(PinEditor& editor, Perform perform, QWidget* parent)
    : QDialog(parent),
      editor_(editor),
      perform_(std::move(perform)),
      fourWire_(new QRadioButton(tr("&4-wire"))),
      fiveWire_(new QRadioButton(tr("&5-wire"))),
      drawing_(new SensorDrawing),
      controller_(new QLabel),
      problems_(new QLabel),
      statusLine_(new StatusLine),
      update_(new QPushButton(tr("&Update"))),
      putBack_(new QPushButton(tr("&Put back"))) {
  setObjectName("frmPinDefine");
  setWindowTitle(tr("Sensor pin definition"));
  setHelpChapter(*this, "Sensor pin definition");
  addHelpKey(*this);
  fourWire_->setObjectName("optionFourWire");
  fiveWire_->setObjectName("optionFiveWire");
  problems_->setObjectName("lblPinProblems");
  problems_->setWordWrap(true);
  problems_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // Room for all that is ever told, so that nothing moves when it comes.
  problems_->setMinimumHeight((mostTold() + 1) * problems_->fontMetrics().lineSpacing());
  controller_->setObjectName("lblPinController");
  update_->setObjectName("cmdUpdatePins");
  putBack_->setObjectName("cmdPutBackPins");
  putBack_->setToolTip(tr("Writes the mapping from before the last update"));
  auto* const read = new QPushButton(tr("&Read"));
  read->setObjectName("cmdReadPins");
  auto* const close = new QPushButton(tr("&Close"));
  close->setObjectName("cmdClosePins");

  for (std::size_t wire = 0; wire < fiveWirePlaces.size(); ++wire) {
    WireControls controls{new QGroupBox, new QSpinBox, new QSpinBox};
    controls.box->setObjectName("wire_" + QString::number(wire));
    auto* const form = new QFormLayout(controls.box);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    if (!isSmallScreen()) {
      // So that all four wires are seen at once.
      constexpr int closer = 4;
      form->setVerticalSpacing(closer);
      QMargins around = form->contentsMargins();
      around.setTop(closer);
      around.setBottom(closer + 2);
      form->setContentsMargins(around);
    }
    form->addRow(tr("Channel"), controls.channel);
    form->addRow(tr("Bit"), controls.bit);
    for (QSpinBox* const number : {controls.channel, controls.bit}) {
      number->setRange(0, highestByte);
      number->setMinimumHeight(fingerSize());
      connect(number, &QSpinBox::valueChanged, this, [this, wire] {
        editor_.assign(wire, {wires_[wire].channel->value(), wires_[wire].bit->value()});
        showProblems();
      });
    }
    controls.channel->setObjectName("channel_" + QString::number(wire));
    controls.bit->setObjectName("bit_" + QString::number(wire));
    controls.box->setParent(drawing_);
    wires_.push_back(controls);
  }

  auto* const types = new QHBoxLayout;
  types->addWidget(fourWire_);
  types->addWidget(fiveWire_);
  types->addStretch();
  types->addWidget(controller_);
  auto* const buttons = new QHBoxLayout;
  for (QPushButton* const button : {read, update_, putBack_, close}) {
    button->setAutoDefault(false);  // Enter in a field takes what was typed, and does no more
    buttons->addWidget(button);
  }
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(types);
  auto* const page = new ScrolledPage;
  page->put(drawing_);
  layout->addWidget(page, 1);
  layout->addWidget(problems_);
  layout->addWidget(statusLine_);
  layout->addLayout(buttons);
  resize(QSize(660, 690).boundedTo(screen()->availableSize()));

  const auto choose = [this](SensorType type) {
    return [this, type](bool on) {
      if (!on) return;
      editor_.setType(type);
      fill();
    };
  };
  connect(fourWire_, &QRadioButton::toggled, this, choose(SensorType::fourWire));
  connect(fiveWire_, &QRadioButton::toggled, this, choose(SensorType::fiveWire));
  connect(read, &QPushButton::clicked, this, [this] { reload(); });
  connect(update_, &QPushButton::clicked, this,
          [this] { run(tr("Writing the pin definition …"), [this] { return editor_.update(); }); });
  connect(putBack_, &QPushButton::clicked, this, [this] {
    run(tr("Putting the old mapping back …"), [this] { return editor_.putBack(); });
  });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  fill();
}

void frmPinDefine::open() {
  show();
  raise();
  activateWindow();
  if (!editor_.isEdited()) reload();
}

void frmPinDefine::reload() {
  run(tr("Reading the pin definition …"), [this] { return editor_.read(); });
}

void frmPinDefine::run(const QString& what, const std::function<Notice()>& action) {
  const QPointer<QWidget> focus = focusWidget();
  statusLine_->showWait(what);
  // Nothing is said of what an error has ended: the user is told of that error.
  Notice outcome;
  runThen([&] { outcome = perform_(what.toStdString(), action); },
          [&] {
            statusLine_->show(outcome);
            if (focus) focus->setFocus();
            fill();
          });
}

void frmPinDefine::placeWires() {
  const PinDefinition& definition = editor_.definition();
  const auto names = wireNames(definition.type);
  for (std::size_t wire = 0; wire < wires_.size(); ++wire) {
    QGroupBox* const box = wires_[wire].box;
    const bool used = wire < names.size();
    box->setVisible(used);
    if (!used) continue;
    const QString name = shownText(names[wire]);
    box->setTitle(name);
    wires_[wire].channel->setAccessibleName(tr("%1, analogue channel").arg(name));
    wires_[wire].bit->setAccessibleName(tr("%1, I/O bit").arg(name));
    drawing_->place(box, placeOf(definition.type, wire));
  }
  drawing_->update();
}

void frmPinDefine::fill() {
  const PinDefinition& definition = editor_.definition();
  const QSignalBlocker silentFour(fourWire_);
  const QSignalBlocker silentFive(fiveWire_);
  fourWire_->setChecked(definition.type == SensorType::fourWire);
  fiveWire_->setChecked(definition.type == SensorType::fiveWire);
  controller_->setText(shownText(editor_.controller()));
  placeWires();
  for (std::size_t wire = 0; wire < definition.wires.size(); ++wire) {
    const QSignalBlocker silentChannel(wires_[wire].channel);
    const QSignalBlocker silentBit(wires_[wire].bit);
    wires_[wire].channel->setValue(definition.wires[wire].channel);
    wires_[wire].bit->setValue(definition.wires[wire].bit);
  }
  showProblems();
}

void frmPinDefine::showProblems() {
  const auto problems = editor_.problems();
  QStringList lines;
  std::vector<bool> wrong(wires_.size(), false);
  for (const PinProblem& problem : problems) {
    wrong[problem.wire] = true;
    if (problem.sharesWith) wrong[*problem.sharesWith] = true;
    const QString wire = wires_[problem.wire].box->title();
    const QString text = shownText(problem.text);
    if (lines.size() < mostTold()) lines.append(text.startsWith(wire) ? text : wire + ": " + text);
  }
  if (const int more = static_cast<int>(problems.size()) - mostTold(); more > 0)
    lines.append(tr("and %1 more").arg(more));
  std::vector<const QWidget*> marked;
  for (std::size_t wire = 0; wire < wires_.size(); ++wire)
    if (wrong[wire]) marked.push_back(wires_[wire].box);
  drawing_->mark(std::move(marked));
  problems_->setText(problems.empty() ? tr("Every channel and every bit is used once.")
                                      : lines.join('\n'));
  update_->setEnabled(problems.empty());
  putBack_->setEnabled(editor_.canPutBack());
}

}  // namespace touch
