#include "linetest/linearity/frmLinearity.h"

#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "linetest/files/damaged_files.h"
#include "linetest/linearity/frmLinearityResult.h"
#include "linetest/linearity/linearity_files.h"
#include "linetest/linearity/linearity_guide.h"
#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/guide/help.h"
#include "ui/screens/touch_canvas.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr double smallestPanel = 20;  // mm
constexpr double largestPanel = 3000;
constexpr int inkWidth = 3;
constexpr int pageGap = 8;
constexpr int widestPanel = 560;

FingerSpinBox* makeLength(const char* name, const QString& says) {
  auto* const length = new FingerSpinBox(name, says);
  length->box().setRange(smallestPanel, largestPanel);
  length->box().setDecimals(1);
  length->box().setSuffix(" mm");
  return length;
}

QString inMm(double value) {
  return shownNumber(value, 2) + " mm";
}

}  // namespace

frmLinearity::frmLinearity(LinearityParts parts, const Simulation& simulation,
                           std::string controller, const QScreen& screen,
                           const std::optional<QSize>& size, std::function<void()> onLeft)
    : FullScreenWindow(screen, size, std::move(onLeft)),
      parts_(std::move(parts)),
      pages_(new QStackedWidget(this)),
      panelWidth_(makeLength("panelWidth", tr("Panel width"))),
      panelHeight_(makeLength("panelHeight", tr("Panel height"))),
      canvas_(new TouchCanvas),
      lineTitle_(new QLabel),
      instruction_(new QLabel),
      resultPage_(new frmLinearityResult(parts_.prompt, parts_.setup, parts_.workingFolder)) {
  setObjectName("frmLinearity");
  setWindowTitle(shownText(parts_.messages.at(LinearityProcedure::titleMessage)));
  setHelpChapter(*this, "Prove a panel is good");
  addHelpKey(*this);
  canvas_->setObjectName("linearityCanvas");
  presentAsGraphic(*canvas_, tr("Lines to follow"),
                   tr("The line to draw along is white; its name stands in the panel beside it."));
  canvas_->setFocusPolicy(Qt::StrongFocus);
  canvas_->touchThrough(simulation, std::move(controller));

  pages_->addWidget(makeSizePage());
  pages_->addWidget(makeGuidePage());
  pages_->addWidget(resultPage_);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(pages_);

  connect(canvas_, &TouchCanvas::penDown, this,
          [this](Qt::MouseButton, TwipsPoint at) { penDown(at); });
  connect(canvas_, &TouchCanvas::penMoved, this, &frmLinearity::penMoved);
  connect(canvas_, &TouchCanvas::penUp, this, &frmLinearity::penUp);
  connect(resultPage_, &frmLinearityResult::drawAgainRequested, this, [this](const TestLine& line) {
    procedure_->goTo(line);
    showLine();
  });
  connect(resultPage_, &frmLinearityResult::measureAnewRequested, this, &frmLinearity::measureAnew);
  connect(resultPage_, &frmLinearityResult::backRequested, this, &frmLinearity::backToLines);
  connect(resultPage_, &frmLinearityResult::leaveRequested, this, [this] { askToLeave(); });
}

frmLinearity::~frmLinearity() = default;

QWidget* frmLinearity::makeSizePage() {
  auto* const page = new QWidget;
  auto* const title = new QLabel(tr("How large is the panel's active area?"));
  title->setFont(resized(font(), 1.3));
  title->setWordWrap(true);
  auto* const why = new QLabel(
      tr("Deviations are judged in millimetres. Measure the picture, without its frame."));
  why->setWordWrap(true);

  auto* const form = new QFormLayout;
  const std::pair<QString, FingerSpinBox*> rows[] = {{tr("&Width:"), panelWidth_},
                                                     {tr("&Height:"), panelHeight_}};
  for (const auto& [caption, length] : rows) {
    auto* const label = new QLabel(caption);
    label->setBuddy(&length->box());
    label->setMinimumHeight(fingerSize());
    form->addRow(label, length);
  }
  auto* const start = new QPushButton(tr("&Start"));
  start->setObjectName("cmdStart");
  start->setDefault(true);
  auto* const leaveButton = new QPushButton(tr("&Leave"));
  leaveButton->setObjectName("cmdLeaveSize");
  connect(start, &QPushButton::clicked, this, &frmLinearity::sizeEntered);
  connect(leaveButton, &QPushButton::clicked, this, [this] { askToLeave(); });
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(start);
  buttons->addWidget(leaveButton);

  auto* const column = new QVBoxLayout;
  column->addStretch();
  column->addWidget(title);
  column->addWidget(why);
  column->addLayout(form);
  column->addLayout(buttons);
  column->addStretch();
  auto* const middle = new QHBoxLayout(page);
  middle->addStretch(1);
  middle->addLayout(column, 3);
  middle->addStretch(1);
  return page;
}

QPushButton* frmLinearity::guideButton(const char* name, const QString& caption,
                                       const QString& hint, std::function<void()> action) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(hint);
  makeFingerSized(*button);
  connect(button, &QPushButton::clicked, this, std::move(action));
  return button;
}

QWidget* frmLinearity::makeGuidePage() {
  guidePage_ = new QWidget;
  canvas_->setParent(guidePage_);
  guidePanel_ = makeGuidePanel();
  guidePanel_->setParent(guidePage_);
  return guidePage_;
}

QFrame* frmLinearity::makeGuidePanel() {
  auto* const panel = new QFrame;
  panel->setObjectName("guidePanel");
  panel->setStyleSheet(
      "#guidePanel { background: #f4f4f4; border: 1px solid #808080; border-radius: 4px }"
      "#guidePanel QLabel { color: black }");
  lineTitle_->setObjectName("lineTitle");
  QFont bold = font();
  bold.setBold(true);
  lineTitle_->setFont(bold);
  instruction_->setObjectName("instruction");
  instruction_->setWordWrap(true);
  instruction_->setAlignment(Qt::AlignTop | Qt::AlignLeft);

  backButton_ =
      guideButton("cmdBack", tr("\u25C0 &Back"), tr("The line before (Left)"), [this] { back(); });
  repeatButton_ = guideButton("cmdRepeat", tr("&Repeat"), tr("Draws this line anew (Backspace)"),
                              [this] { repeat(); });
  nextButton_ =
      guideButton("cmdNext", tr("&Next \u25B6"),
                  tr("Keeps what is drawn and goes on (Right, Enter)"), [this] { next(); });
  auto* const results = guideButton("cmdResults", tr("Re&sults"),
                                    tr("What has been measured so far"), [this] { showResults(); });
  auto* const leaveButton = guideButton(
      "cmdLeave", tr("&Leave"), tr("Back to the main window (Esc)"), [this] { askToLeave(); });

  guideButtons_ = {backButton_, nextButton_, repeatButton_, results, leaveButton};
  auto* const grid = new QGridLayout(panel);
  grid->setContentsMargins(pageGap, pageGap, pageGap, pageGap);
  grid->setSpacing(isSmallScreen() ? 3 : 6);
  return panel;
}

// Tall beside a vertical line, flat above or below a horizontal one.
void frmLinearity::arrangePanel(int columns) {
  auto* const grid = static_cast<QGridLayout*>(guidePanel_->layout());
  grid->addWidget(lineTitle_, 0, 0, 1, columns);
  grid->addWidget(instruction_, 1, 0, 1, columns);
  int place = 0;
  for (QPushButton* const button : guideButtons_) {
    const bool alone = button == guideButtons_.back() && place % columns == 0;
    grid->addWidget(button, 2 + place / columns, place % columns, 1, alone ? columns : 1);
    ++place;
  }
}

void frmLinearity::started() {
  const TwipsSize screen{static_cast<float>(width()) * twipsPerPixel,
                         static_cast<float>(height()) * twipsPerPixel};
  const MeasuredPanel nominal = MeasuredPanel::ofNominalSize(screen);
  panelWidth_->box().setValue(nominal.widthMm);
  panelHeight_->box().setValue(nominal.heightMm);
  if (parts_.setup.panelSize) {
    begin();
  } else {
    pages_->setCurrentIndex(0);
    panelWidth_->setFocus();
    panelWidth_->box().selectAll();
  }
}

void frmLinearity::sizeEntered() {
  parts_.setup.panelSize = LinearitySetup::PanelSize{panelWidth_->value(), panelHeight_->value()};
  begin();
}

void frmLinearity::begin() {
  pages_->setCurrentWidget(guidePage_);
  placePanel();
  procedure_.emplace(measuredPanel());
  takeUpEarlierResults() ? showLine() : leave();
}

MeasuredPanel frmLinearity::measuredPanel() const {
  const auto size = *parts_.setup.panelSize;
  return {canvas_->sizeInTwips(), size.widthMm, size.heightMm};
}

bool frmLinearity::takeUpEarlierResults() {
  EarlierResults earlier = readResults(parts_.workingFolder, procedure_->panel());
  if (!earlier.damaged.empty()) {
    parts_.prompt.message(damagedFilesText(earlier.damaged) + "\n\n" +
                          tr("Draw the lines of such files again. Each file is then kept beside "
                             "the new one, with \".old\" behind its name.")
                              .toStdString());
  }
  const auto measured = earlier.results.size();
  if (measured == 0) return true;
  const auto goOn = [&] {
    return parts_.prompt.choose(
        tr("%1 of 18 lines have been measured.").arg(measured).toStdString(),
        tr("Continue").toStdString(), tr("Start over").toStdString());
  };
  switch (measured == LinearityProcedure::lines ? Answer::yes : goOn()) {
    case Answer::yes:
      for (auto& [line, result] : earlier.results)
        procedure_->restore(line, std::move(result));
      return true;
    case Answer::no:
      putAside(earlier.lines());
      return true;
    case Answer::none:
      break;
  }
  return false;
}

void frmLinearity::putAside(std::span<const TestLine> lines) {
  if (const auto aside = setAside(parts_.workingFolder, lines); !aside)
    parts_.prompt.message(aside.error().describe());
}

void frmLinearity::measureAnew() {
  const QString question =
      tr("Measure all lines anew? The results so far are kept as files, with "
         "\".old\" behind their names.");
  if (parts_.prompt.choose(question.toStdString(), tr("Measure anew").toStdString(),
                           tr("Cancel").toStdString()) != Answer::yes) {
    return;
  }
  const MeasuredPanel panel = procedure_->panel();
  putAside(readResults(parts_.workingFolder, panel).lines());
  procedure_.emplace(panel);
  showLine();
}

// A line that was drawn on a screen of another size lies elsewhere on this one.
void frmLinearity::followSize() {
  if (!procedure_ || procedure_->penIsDown()) return;
  if (canvas_->sizeInTwips() == procedure_->panel().screen) return;
  procedure_.emplace(measuredPanel());
  for (auto& [line, result] : readResults(parts_.workingFolder, procedure_->panel()).results)
    procedure_->restore(line, std::move(result));
  if (pages_->currentWidget() != resultPage_) showLine();
}

void frmLinearity::next() {
  if (const auto kept = keepAndGoOn(parts_.workingFolder, *procedure_); !kept) {
    parts_.prompt.message(kept.error().describe());
  }
  showLine();
}

void frmLinearity::back() {
  procedure_->back();
  showLine();
}

void frmLinearity::backToLines() {
  if (!procedure_->current()) procedure_->back();
  showLine();
}

void frmLinearity::repeat() {
  procedure_->repeat();
  showLine();
}

void frmLinearity::penDown(TwipsPoint at) {
  procedure_->penDown(at);
  pen_ = at;
  canvas_->point(at, tracedColour, inkWidth);
}

void frmLinearity::penMoved(TwipsPoint at) {
  procedure_->penMove(at);
  canvas_->line(std::exchange(pen_, at), at, tracedColour, inkWidth);
}

void frmLinearity::penUp() {
  const StrokeVerdict verdict = procedure_->penUp();
  if (const auto message = messageOf(verdict)) {
    parts_.prompt.message(parts_.messages.at(*message),
                          parts_.messages.at(LinearityProcedure::titleMessage));
  }
  showLine(verdict == StrokeVerdict::usable
               ? QString()
               : tr("Stroke too short. Draw the whole line again, from edge to edge."));
}

void frmLinearity::showLine(const QString& note) {
  if (procedure_->penIsDown()) return;  // the stroke's ink stays
  const auto line = procedure_->current();
  if (!line) {
    showResults();
    return;
  }
  pages_->setCurrentWidget(guidePage_);
  drawLinearityGuide(*canvas_, *procedure_);
  const auto drawn = procedure_->drawn();
  const auto& kept = procedure_->result(*line);
  lineTitle_->setText(tr("%1   %2 of 18 measured")
                          .arg(shownText(labelOf(*line)))
                          .arg(procedure_->results().size()));
  if (!note.isEmpty()) {
    instruction_->setText(note);
  } else if (drawn || kept) {
    const LineFigures& figures = drawn ? drawn->figures : kept->figures;
    const bool passed =
        judge(figures, parts_.setup.limits, procedure_->panel(), line->orientation).passed();
    instruction_->setText(tr("%1 %2: at most %3 off, straight to %4.")
                              .arg(drawn ? tr("Drawn:") : tr("Measured before:"),
                                   passed ? tr("pass") : tr("FAIL"),
                                   inMm(figures.all.absoluteMaximum), inMm(figures.straightness)));
  } else {
    instruction_->setText(tr("Draw along the white line, from edge to edge."));
  }
  repeatButton_->setEnabled(drawn.has_value());
  backButton_->setEnabled(*line != TestLine{});
  placePanel();
  canvas_->setFocus();
}

void frmLinearity::showResults() {
  if (procedure_->penIsDown()) return;
  resultPage_->showResults(procedure_->results(), procedure_->panel());
  pages_->setCurrentWidget(resultPage_);
  resultPage_->takeFocus();
}

// On the half of the screen that the current line does not cross.
void frmLinearity::placePanel() {
  pages_->setGeometry(rect());
  guidePage_->setGeometry(rect());
  canvas_->setGeometry(guidePage_->rect());
  const auto line = procedure_ ? procedure_->current() : std::nullopt;
  const bool vertical = !line || line->orientation == Orientation::vertical;
  const bool inFirstHalf = !line || line->number <= (TestLine::perOrientation + 1) / 2;
  constexpr int tallColumns = 2;
  arrangePanel(vertical ? tallColumns : static_cast<int>(guideButtons_.size()));

  const int half = (vertical ? width() : height()) / 2;
  const int room = (vertical ? half : width()) - 2 * pageGap;
  const int panelWidth = std::min(room, widestPanel);
  guidePanel_->resize(panelWidth, guidePanel_->layout()->totalHeightForWidth(panelWidth));
  const QSize free(width() - guidePanel_->width(), height() - guidePanel_->height());
  // The middle of the half that the line does not cross.
  const int thickness = vertical ? guidePanel_->width() : guidePanel_->height();
  const int place = (inFirstHalf ? half : 0) + (half - thickness) / 2;
  guidePanel_->move(vertical ? QPoint(place, free.height() / 2) : QPoint(free.width() / 2, place));
  guidePanel_->raise();
}

bool frmLinearity::event(QEvent* event) {
  // While the lines are drawn a held mnemonic comes as a held key, too, and not as a row of clicks.
  if (event->type() == QEvent::ShortcutOverride && pages_->currentWidget() == guidePage_ &&
      static_cast<QKeyEvent*>(event)->isAutoRepeat()) {
    event->accept();
    return true;
  }
  return FullScreenWindow::event(event);
}

void frmLinearity::keyPressEvent(QKeyEvent* event) {
  // A key that is held would run through the lines, or answer a box and then leave.
  if (event->isAutoRepeat()) return;
  const bool guiding = pages_->currentWidget() == guidePage_;
  switch (event->key()) {
    case Qt::Key_Escape:
      askToLeave();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (pages_->currentIndex() == 0) return sizeEntered();
      [[fallthrough]];
    case Qt::Key_Right:
      if (guiding) return next();
      break;
    case Qt::Key_Left:
      if (guiding) return back();
      break;
    case Qt::Key_Backspace:
      if (guiding) return repeat();
      break;
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

void frmLinearity::resizeEvent(QResizeEvent*) {
  if (guidePanel_ == nullptr) return;
  placePanel();
  followSize();
}

}  // namespace touch
