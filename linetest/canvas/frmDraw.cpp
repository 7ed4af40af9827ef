#include "linetest/canvas/frmDraw.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "linetest/canvas/hiding_tools.h"
#include "ui/controls/finger_list.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/guide/help.h"
#include "ui/screens/key_place.h"
#include "ui/screens/touch_canvas.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int gap = 6;
constexpr int finestTolerance = 1;  // tenths of a percent
constexpr int coarsestTolerance = 50;
constexpr int toleranceAtFirst = 10;

constexpr const char* panelStyle =
    "#tools, #resultsFrame { background: #f4f4f4; border: 1px solid #808080; border-radius: 4px }"
    "#tools QCheckBox, #tools QLabel { color: black }"
    "#resultsTable, #resultsList { background: white; color: black }";

int pixels(float twips) {
  return static_cast<int>(twips / twipsPerPixel);
}

float twips(int pixels) {
  return static_cast<float>(pixels) * twipsPerPixel;
}

QColor colourOf(Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

/// "Text (*.fdw) |*.fdw" is a caption with a pattern of its own behind it.
QString dialogFilter(std::string_view filter) {
  return shownText(filter.substr(0, filter.find('|'))).trimmed();
}

/// A name to begin with: whoever has no keyboard cannot type one.
QString freeName(const std::filesystem::path& folder) {
  std::string name;
  std::error_code unknown;
  int number = 0;
  do {
    name = "drawing" + std::to_string(++number) + ".fdw";
  } while (std::filesystem::exists(folder / name, unknown));
  return QString::fromStdString(name);
}

}  // namespace

frmDraw::frmDraw(CanvasParts parts, const Simulation& simulation, std::string controller,
                 const QScreen& screen, const std::optional<QSize>& size,
                 std::function<void()> onLeft)
    : FullScreenWindow(screen, size, std::move(onLeft)),
      messages_(parts.messages),
      canvasWidget_(new TouchCanvas(this)),
      helpPanel_(new FingerList(this)),
      menuPanel_(new FingerList(this)),
      banner_(new QLabel(this)),
      caption_(new QLabel(this)),
      resultsList_(new QListWidget(this)),
      resultsFrame_(new QFrame(this)),
      resultsTable_(new QTableWidget(ResultsSheet::rows, ResultsSheet::columns)),
      tools_(new QFrame(this)),
      lessUsedTools_(new QWidget),
      help_(new QPushButton(tr("&Help"))),
      undo_(new QPushButton(tr("&Undo"))),
      menu_(new QPushButton(tr("&Menu"), this)),
      escape_(new QPushButton(this)),
      toleranceView_(new QCheckBox(tr("&Band"))),
      toleranceBar_(new QScrollBar(Qt::Horizontal)),
      toleranceLabel_(new QLabel) {
  setObjectName("frmDraw");
  setWindowTitle(tr("Drawing"));
  setHelpChapter(*this, "Drawing");
  addHelpKey(*this, helpKeyWhereF1IsTaken);
  setStyleSheet(panelStyle);
  canvasWidget_->setObjectName("drawingCanvas");
  presentAsGraphic(*canvasWidget_, tr("Drawing area"),
                   tr("What is drawn on the panel, and the guide lines"));
  canvasWidget_->setFocusPolicy(Qt::StrongFocus);
  canvasWidget_->setPaper(canvasPaper);
  canvasWidget_->setGeometry(rect());
  banner_->setText(simulation.isThere()
                       ? tr("Draw with the mouse: the ink appears where the simulated "
                            "controller reports it.\nF1 helps, Esc leaves.")
                       : tr("Draw with your finger.\nF1 helps, Esc leaves."));
  canvasWidget_->touchThrough(simulation, std::move(controller));
  makePanels();
  makeTools();

  new HidingTools(parts.clock, *canvasWidget_, {tools_, menu_, escape_}, this);
  canvas_ = std::make_unique<Canvas>(std::move(parts), *this, canvasWidget_->sizeInTwips());
  connect(canvasWidget_, &TouchCanvas::penDown, this,
          [this](Qt::MouseButton button, TwipsPoint at) {
            canvas_->pointerDown(
                button == Qt::RightButton ? PointerButton::right : PointerButton::left, at);
          });
  connect(canvasWidget_, &TouchCanvas::penMoved, this,
          [this](TwipsPoint at) { canvas_->pointerMove(at); });
  connect(canvasWidget_, &TouchCanvas::penUp, this,
          [this](TwipsPoint at) { canvas_->pointerUp(at); });
  connect(helpPanel_, &FingerList::chosen, this,
          [this](int row) { canvas_->chooseHelp(static_cast<std::size_t>(row)); });
  connect(menuPanel_, &FingerList::chosen, this, [this](int row) {
    if (const auto entry = static_cast<std::size_t>(row); entry < canvasMenu.size()) {
      canvas_->choose(canvasMenu[entry]);
    } else {
      canvas_->perform(CanvasAction::escape);  // the last entry puts the menu away
    }
  });
  connect(resultsList_, &QListWidget::itemClicked, this, [this] { canvas_->dismissResultsList(); });
  connect(help_, &QPushButton::clicked, this,
          [this] { canvas_->perform(CanvasAction::toggleHelp); });
  connect(undo_, &QPushButton::clicked, this, [this] { canvas_->perform(CanvasAction::undo); });
  connect(menu_, &QPushButton::clicked, this, [this] {
    const QPoint above = menu_->geometry().center();
    canvas_->toggleMenu({static_cast<float>(above.x()) * twipsPerPixel, 0});
  });
  connect(escape_, &QPushButton::clicked, this, [this] { canvas_->perform(CanvasAction::escape); });
  connect(toleranceBar_, &QScrollBar::valueChanged, this,
          [this](int tenths) { canvas_->setTolerance(tenths); });
  connect(toleranceView_, &QCheckBox::toggled, this,
          [this](bool on) { canvas_->setToleranceView(on); });
  qApp->installEventFilter(this);
}

frmDraw::~frmDraw() = default;

void frmDraw::makePanels() {
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  helpPanel_->setObjectName("helpPanel");
  helpPanel_->setAccessibleName(tr("Keys; tap one to use it"));
  helpPanel_->setFont(fixed);

  menuPanel_->setObjectName("menuPanel");
  menuPanel_->setAccessibleName(tr("Menu"));
  QStringList entries;
  for (const CanvasMenuEntry& entry : canvasMenu)
    entries << shownText(messages_.at(entry.message));
  constexpr std::size_t escapeMessage = 47;
  entries << shownText(messages_.at(escapeMessage));
  menuPanel_->setLines(entries);

  banner_->setObjectName("banner");
  banner_->setAlignment(Qt::AlignCenter);
  banner_->setStyleSheet("background: #1f5fa8; color: white; padding: 12px; border-radius: 6px");
  banner_->setAttribute(Qt::WA_TransparentForMouseEvents);
  banner_->setFont(resized(font(), isSmallScreen() ? 1 : 1.3));

  caption_->setObjectName("nextLine");
  caption_->setAlignment(Qt::AlignCenter);
  caption_->setWordWrap(true);
  caption_->setStyleSheet("color: black");
  caption_->setAttribute(Qt::WA_TransparentForMouseEvents);

  resultsList_->setObjectName("resultsList");
  resultsList_->setAccessibleName(tr("Deviations of the last stroke; tap to put away"));
  resultsList_->setUniformItemSizes(true);
  resultsList_->setFocusPolicy(Qt::NoFocus);

  resultsFrame_->setObjectName("resultsFrame");
  resultsTable_->setObjectName("resultsTable");
  resultsTable_->setAccessibleName(tr("Results of the guide lines"));
  resultsTable_->setTextElideMode(Qt::ElideNone);
  resultsTable_->setWordWrap(false);
  resultsTable_->horizontalHeader()->hide();
  resultsTable_->verticalHeader()->hide();
  resultsTable_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  resultsTable_->setSelectionMode(QAbstractItemView::NoSelection);
  resultsTable_->setFocusPolicy(Qt::NoFocus);
  auto* const close = new QPushButton(tr("&Close"));
  close->setObjectName("cmdCloseResults");
  connect(close, &QPushButton::clicked, this, [this] { canvas_->perform(CanvasAction::escape); });
  auto* const column = new QVBoxLayout(resultsFrame_);
  column->setContentsMargins(gap, gap, gap, gap);
  column->addWidget(resultsTable_);
  column->addWidget(close, 0, Qt::AlignRight);
  for (QWidget* const panel : std::initializer_list<QWidget*>{
           helpPanel_, menuPanel_, banner_, caption_, resultsList_, resultsFrame_})
    panel->hide();
}

void frmDraw::makeTools() {
  tools_->setObjectName("tools");
  help_->setObjectName("cmdHelp");
  help_->setToolTip(tr("Keys and commands (F1)"));
  undo_->setObjectName("cmdUndo");
  undo_->setToolTip(tr("Takes the last recorded stroke back (D)"));
  toleranceView_->setObjectName("toleranceView");
  toleranceView_->setAccessibleName(tr("Show the tolerance band along the guide lines"));
  toleranceView_->setToolTip(toleranceView_->accessibleName());
  toleranceBar_->setObjectName("toleranceBar");
  toleranceBar_->setAccessibleName(tr("Tolerance in tenths of a percent"));
  toleranceBar_->setRange(finestTolerance, coarsestTolerance);
  toleranceBar_->setValue(toleranceAtFirst);
  toleranceBar_->setPageStep(5);
  toleranceBar_->setFocusPolicy(Qt::StrongFocus);
  toleranceBar_->setMinimumWidth(fingerSize());
  makeFingerSized(*help_);
  makeFingerSized(*undo_);
  menu_->setObjectName("cmdMenu");
  menu_->setToolTip(tr("Commands, by right button as well"));
  escape_->setObjectName("cmdEscape");
  for (QPushButton* const way : {menu_, escape_})
    makeFingerSized(*way);
  toleranceBar_->setFixedHeight(fingerSize());
  toleranceLabel_->setObjectName("lblTolerance");
  toleranceLabel_->ensurePolished();
  toleranceLabel_->setMinimumWidth(toleranceLabel_->fontMetrics().horizontalAdvance("88.8 %"));

  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(gap);
  buttons->addWidget(help_);
  buttons->addWidget(undo_);
  auto* const tolerance = new QGridLayout(lessUsedTools_);
  tolerance->setContentsMargins(0, 0, 0, 0);
  tolerance->setSpacing(gap / 2);
  tolerance->addWidget(toleranceView_, 0, 0);
  tolerance->addWidget(toleranceLabel_, 0, 1, Qt::AlignRight);
  tolerance->addWidget(toleranceBar_, 1, 0, 1, 2);
  auto* const layout = new QVBoxLayout(tools_);
  layout->setContentsMargins(gap / 2, gap / 2, gap / 2, gap / 2);
  layout->setSpacing(gap / 2);
  layout->addLayout(buttons);
  layout->addWidget(lessUsedTools_);
  QWidget* before = canvasWidget_;
  for (QWidget* const next :
       std::initializer_list<QWidget*>{help_, undo_, toleranceView_, toleranceBar_, menu_, escape_})
    setTabOrder(std::exchange(before, next), next);
}

void frmDraw::started() {
  placePanels();
  canvasWidget_->setFocus();
  canvas_->activate();
  canvas_->takeUpStrokes();
}

void frmDraw::askToLeave() {
  canvas_->perform(CanvasAction::leave);
}

void frmDraw::leave() {
  FullScreenWindow::leave();
}

void frmDraw::resizeEvent(QResizeEvent*) {
  canvasWidget_->setGeometry(rect());
  canvas_->resize(canvasWidget_->sizeInTwips());
  placePanels();
}

// The tools lie between the second and the third vertical and the last two horizontal guide lines,
// and cover none, as long as the screen is large enough.
bool frmDraw::hasRoomForTools() const {
  const GuideLines guides(canvasWidget_->sizeInTwips());
  const QSize cell(pixels(guides.V(2) - guides.V(1)), pixels(guides.H(4) - guides.H(3)));
  constexpr int roomAround = 8;
  // The captions count, not the width that buttons like to have.
  const auto captionWidth = [](const QPushButton& button) {
    return button.fontMetrics().size(Qt::TextShowMnemonic, button.text()).width() + 3 * gap;
  };
  const int buttons = 2 * std::max(captionWidth(*help_), captionWidth(*undo_)) + gap;
  const int needed = std::max(buttons, lessUsedTools_->minimumSizeHint().width());
  return cell.width() >= std::max(4 * fingerSize(), needed + 3 * gap + 2) &&
         cell.height() >= 2 * fingerSize() + 2 * roomAround;
}

void frmDraw::placeTools() {
  const bool roomy = hasRoomForTools();
  const bool all = roomy || !helpPanel_->isHidden();
  lessUsedTools_->setVisible(all);
  undo_->setVisible(all);
  tools_->layout()->activate();
  tools_->adjustSize();
  const GuideLines guides(canvasWidget_->sizeInTwips());
  const int left = pixels(roomy ? guides.V(1) : guides.V(0));
  const int right = pixels(guides.V(2));
  const int top = pixels(guides.H(3));
  const int bottom = pixels(guides.H(4));
  if (roomy) tools_->resize(right - left - 2 * gap, tools_->height());
  const int lowest =
      all && !roomy ? height() - tools_->height() - 1 : top + (bottom - top - tools_->height()) / 2;
  tools_->move(left + gap, lowest);
  placeWays(guides, roomy);
}

// Menu and Esc have a field of their own beside the other tools, or one each where it is small.
void frmDraw::placeWays(const GuideLines& guides, bool roomy) {
  const auto field = [&guides](int column) {
    return QRect(QPoint(pixels(guides.V(column)), pixels(guides.H(3))),
                 QPoint(pixels(guides.V(column + 1)), pixels(guides.H(4))))
        .adjusted(gap, gap / 2, -gap, -gap / 2);
  };
  // On a small screen the open help's tools take their place.
  const bool free = roomy || helpPanel_->isHidden();
  menu_->setVisible(free);
  escape_->setVisible(free);
  const int height = std::min(field(2).height(), fingerSize());
  QRect menu = field(roomy ? 2 : 1);
  QRect escape = field(2);
  if (roomy) {
    menu.setTop(field(2).center().y() - gap / 2 - height);
    escape.setTop(field(2).center().y() + gap / 2);
  } else {
    menu.setTop(menu.center().y() - height / 2);
    escape.setTop(escape.center().y() - height / 2);
  }
  menu.setHeight(height);
  escape.setHeight(height);
  menu_->setGeometry(menu);
  escape_->setGeometry(escape);
  fitEscape();
}

// In one line or in two, with letters that fit.
void frmDraw::fitEscape() {
  constexpr int smallestLetters = 7;  // pixels
  const int room = escape_->width() - 2 * gap;
  QString text = escapeHint_;
  if (escape_->fontMetrics().horizontalAdvance(text) > room) text.replace(": ", ":\n");
  QFont letters = font();
  int size = QFontInfo(letters).pixelSize();
  const auto needed = [&] { return QFontMetrics(letters).size(0, text); };
  while ((needed().width() > room || needed().height() > escape_->height() - 2) &&
         --size >= smallestLetters)
    letters.setPixelSize(size);
  escape_->setFont(letters);
  escape_->setText(text.replace('&', "&&"));
}

void frmDraw::setEscape(std::string_view hint) {
  const QString text = shownText(hint);
  if (text == std::exchange(escapeHint_, text)) return;
  fitEscape();
}

// As large as one field of the grid allows.
void frmDraw::setCaption(std::string_view caption) {
  constexpr int largestLetters = 40;  // pixels
  constexpr int smallestLetters = 8;
  const GuideLines guides(canvasWidget_->sizeInTwips());
  const QSize field = QSize(pixels(guides.V(1) - guides.V(0)), pixels(guides.H(1) - guides.H(0))) -
                      QSize(2 * gap, 2 * gap);
  constexpr int mostLines = 3;
  // The name of the line stays in one.
  const QString text = shownText(caption).replace(" #", "\u00A0#");
  QFont letters = font();
  letters.setBold(true);
  for (int size = largestLetters; size >= smallestLetters; --size) {
    letters.setPixelSize(size);
    const QRect needed =
        QFontMetrics(letters).boundingRect(QRect({}, field), Qt::TextWordWrap, text);
    const int most = std::min(field.height(), mostLines * QFontMetrics(letters).lineSpacing());
    if (needed.width() <= field.width() && needed.height() <= most) break;
  }
  caption_->setFont(letters);
  caption_->setText(text);
  caption_->resize(field);
}

void frmDraw::placePanels() {
  placeTools();
  const int below = hasRoomForTools() ? 0 : tools_->height() + gap;
  const GuideLines guides(canvasWidget_->sizeInTwips());
  const QPoint corner(pixels(guides.V(0)) + gap, hasRoomForTools() ? pixels(guides.H(0)) + gap : 0);
  const int helpBottom = hasRoomForTools() ? tools_->y() - gap : height() - below;
  helpPanel_->fitInto({width() - 2 * corner.x(), helpBottom - corner.y()});
  helpPanel_->move(corner);
  menuPanel_->fitInto(size());
  fitBanner();
  fitResultsList();
}

// So narrow that on a small screen there is a place for it beside the fields of the grid that are
// taken.
void frmDraw::fitResultsList() {
  constexpr int smallestLetters = 8;  // pixels
  const GuideLines guides(canvasWidget_->sizeInTwips());
  const int room = width() - pixels(guides.V(3)) - gap;
  const int besideText =
      style()->pixelMetric(QStyle::PM_ScrollBarExtent) + (isSmallScreen() ? 8 : 16);
  QFont letters = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  int size = QFontInfo(letters).pixelSize();
  const auto needed = [&] {
    return QFontMetrics(letters).horizontalAdvance("  Horizontal #5") + besideText;
  };
  while (needed() > room && --size >= smallestLetters)
    letters.setPixelSize(size);
  resultsList_->setFont(letters);
  resultsList_->resize(needed(), std::min(height() * 9 / 20, QFontMetrics(letters).height() * 20));
}

void frmDraw::fitBanner() {
  banner_->setWordWrap(false);
  banner_->adjustSize();
  if (banner_->width() <= width()) return;
  banner_->setWordWrap(true);
  banner_->resize(width(), banner_->heightForWidth(width()));
}

QWidget* frmDraw::widgetOf(CanvasPanel panel) const {
  switch (panel) {
    case CanvasPanel::help:
      return helpPanel_;
    case CanvasPanel::menu:
      return menuPanel_;
    case CanvasPanel::caption:
      return caption_;
    case CanvasPanel::banner:
      return banner_;
    case CanvasPanel::resultsList:
      return resultsList_;
    case CanvasPanel::resultsTable:
      return resultsFrame_;
  }
  return nullptr;
}

Surface& frmDraw::surface() {
  return *canvasWidget_;
}

TwipsSize frmDraw::sizeOf(CanvasPanel panel) const {
  const QSize size = widgetOf(panel)->size();
  return {static_cast<float>(size.width()) * twipsPerPixel,
          static_cast<float>(size.height()) * twipsPerPixel};
}

void frmDraw::place(CanvasPanel panel, TwipsPoint corner) {
  QWidget* const widget = widgetOf(panel);
  // On a small screen there may be no room on either side of the pen.
  const QSize free = (size() - widget->size()).expandedTo(QSize(0, 0));
  widget->move(std::clamp(pixels(corner.x), 0, free.width()),
               std::clamp(pixels(corner.y), 0, free.height()));
}

std::vector<TwipsRect> frmDraw::tools() const {
  std::vector<TwipsRect> places;
  for (const QWidget* const tool : std::initializer_list<const QWidget*>{tools_, menu_, escape_}) {
    if (tool->isHidden()) continue;
    const QRect place = tool->geometry();
    places.push_back(
        {{twips(place.x()), twips(place.y())}, {twips(place.width()), twips(place.height())}});
  }
  return places;
}

void frmDraw::show(CanvasPanel panel, bool shown) {
  QWidget* const widget = widgetOf(panel);
  const bool wantsKeyboard = panel == CanvasPanel::help || panel == CanvasPanel::menu;
  // Before it is hidden: Qt would take the focus on as the Tab key does, and frame the canvas.
  if (wantsKeyboard && !shown) canvasWidget_->setFocus();
  widget->setVisible(shown);
  // The caption stays below what is looked at for a moment.
  if (shown && panel != CanvasPanel::caption) widget->raise();
  if (panel == CanvasPanel::help) placePanels();
  // Whoever has no mouse goes on with the arrow keys.
  if (wantsKeyboard && shown) widget->setFocus();
}

void frmDraw::setHelp(std::span<const std::string> lines) {
  QStringList texts;
  for (const std::string& line : lines)
    texts << shownText(line);
  helpPanel_->setLines(texts);
  placePanels();
}

void frmDraw::setBanner(std::string_view text) {
  banner_->setText(shownText(text));
  fitBanner();
}

void frmDraw::setResultsList(std::span<const std::string> lines) {
  resultsList_->clear();
  for (const std::string& line : lines)
    resultsList_->addItem(shownText(line));
}

// The widths of the columns are given; the longest position decides the letters' size.
void frmDraw::fitTableFont(float squeeze) {
  constexpr int smallestLetters = 8;  // pixels
  constexpr int besideText = 8;
  const int room = pixels(ResultsSheet::columnWidths.back() * squeeze) - besideText;
  QFont letters = font();
  int size = QFontInfo(letters).pixelSize();
  do {
    letters.setPixelSize(size);
  } while (QFontMetrics(letters).horizontalAdvance("11413.2578") > room &&
           --size >= smallestLetters);
  resultsTable_->setFont(letters);
}

void frmDraw::setResultsTable(const ResultsSheet& sheet) {
  const int frame = 2 * resultsTable_->frameWidth();
  // A screen too narrow for the table squeezes all columns alike.
  float total = 0;
  for (const float columnWidth : ResultsSheet::columnWidths)
    total += columnWidth;
  const float room = static_cast<float>(width() - 4 * gap - frame) * twipsPerPixel;
  const float squeeze = std::min(1.F, room / total);
  fitTableFont(squeeze);
  const int rowHeight = resultsTable_->fontMetrics().height() + (isSmallScreen() ? 2 : 8);
  QFont beyondTolerance = resultsTable_->font();
  beyondTolerance.setBold(true);
  int tableWidth = frame;
  for (int column = 0; column < resultsTable_->columnCount(); ++column) {
    const auto index = static_cast<std::size_t>(column);
    const int columnWidth = pixels(ResultsSheet::columnWidths[index] * squeeze);
    resultsTable_->setColumnWidth(column, columnWidth);
    tableWidth += columnWidth;
    for (int row = 0; row < resultsTable_->rowCount(); ++row) {
      const auto& cell = sheet.cells[static_cast<std::size_t>(row)][index];
      auto* const item = new QTableWidgetItem(shownText(cell.text));
      item->setForeground(colourOf(cell.colour));
      if (row == 0) resultsTable_->setHorizontalHeaderItem(column, new QTableWidgetItem(*item));
      if (cell.colour == ResultsSheet::beyondTolerance && !cell.text.empty()) {
        // Red alone is too faint on white, and tells nothing to those who do not see it. Thin
        // letters would be faint on black as well.
        item->setBackground(Qt::black);
        item->setFont(beyondTolerance);
        item->setData(Qt::AccessibleTextRole, tr("%1, beyond the tolerance").arg(item->text()));
      }
      item->setTextAlignment(row == 0 ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
      resultsTable_->setItem(row, column, item);
    }
  }
  resultsTable_->verticalHeader()->setMinimumSectionSize(1);
  resultsTable_->verticalHeader()->setDefaultSectionSize(rowHeight);
  resultsTable_->setFixedSize(tableWidth, std::min(resultsTable_->rowCount() * rowHeight + frame,
                                                   height() - fingerSize() - 4 * gap));
  resultsFrame_->adjustSize();
  resultsFrame_->move((width() - resultsFrame_->width()) / 2,
                      (height() - resultsFrame_->height()) / 2);
}

void frmDraw::showTolerance(Percent tolerance) {
  toleranceLabel_->setText(shownNumber(static_cast<double>(tolerance.value), 1) +
                           QStringLiteral(" %"));
}

std::filesystem::path frmDraw::askSaveName(const std::filesystem::path& folder,
                                           std::string_view filter) {
  QFileDialog dialog(this, tr("Save drawing"), shownText(folder.string()), dialogFilter(filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  // With it the dialog asks before it replaces a file, whatever was typed.
  dialog.setDefaultSuffix("fdw");
  dialog.selectFile(freeName(folder));
  return dialog.exec() == QDialog::Accepted ? pathOf(dialog.selectedFiles().value(0))
                                            : std::filesystem::path();
}

std::filesystem::path frmDraw::askOpenName(const std::filesystem::path& folder,
                                           std::string_view filter) {
  return pathOf(QFileDialog::getOpenFileName(this, tr("View drawing"), shownText(folder.string()),
                                             dialogFilter(filter)));
}

// The pen's keys are for the canvas; those that scroll are for what is shown over it.
void frmDraw::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End: {
      QAbstractScrollArea* shown = resultsTable_;
      if (resultsFrame_->isHidden()) shown = resultsList_;
      QApplication::sendEvent(shown->verticalScrollBar(), event);
      return;
    }
    default:
      QWidget::keyPressEvent(event);
  }
}

bool frmDraw::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType() ||
      static_cast<QWidget*>(watched)->window() != this) {
    return QWidget::eventFilter(watched, event);
  }
  const auto& key = *static_cast<QKeyEvent*>(event);
  const auto action = canvasActionOf(key);
  // A key that is held would clear and then leave.
  if (action && !key.isAutoRepeat()) canvas_->perform(*action);
  return action.has_value();
}

}  // namespace touch
