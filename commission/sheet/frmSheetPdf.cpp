#include "commission/sheet/frmSheetPdf.h"

#include <QBuffer>
#include <QImage>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <array>
#include <chrono>
#include <functional>
#include <span>

#include "commission/steps/guided_run.h"
#include "measure/lines/lines_page.h"
#include "measure/report/conditions.h"
#include "measure/report/map_page.h"
#include "support/text/language.h"
#include "ui/controls/chart_painter.h"
#include "ui/text.h"

namespace touch::commission {

namespace {

// Lengths are in points, of which 72 are an inch.
constexpr qreal pointsPerInch = 72;
constexpr int dotsPerInch = 600;
constexpr qreal margin = 40;
constexpr qreal gap = 16;
constexpr qreal footerHeight = 24;
constexpr int mostPages = 2;
constexpr qreal signatureRoom = 34;
constexpr qreal signatureHeight = signatureRoom + 20;

/// How close everything stands. A sheet is as roomy as two pages allow, of which the first is to
/// hold all that is signed.
struct Density {
  int body;     ///< size of the letters
  int small;    ///< of what only those read who doubt
  qreal above;  ///< and below the text of a row
  qreal smallAbove;
  qreal leastLines;  ///< how wide the picture of the lines has to be: a part of the page
};
constexpr Density densities[] = {{9, 8, 3, 1, 0.95},    {9, 8, 2, 1, 0.95},    {9, 8, 1, 0.5, 0.9},
                                 {8, 7, 0.5, 0.5, 0.6}, {7, 6, 0.5, 0.5, 0.6}, {7, 6, 0, 0, 0.4}};

constexpr QColor ink(28, 35, 43);
constexpr QColor quiet(90, 101, 114);
constexpr QColor rule(215, 220, 226);

struct OutcomeColours {
  QColor ink;
  QColor ground;
};
const OutcomeColours& coloursOf(measure::Outcome outcome) {
  static constexpr std::array<OutcomeColours, 3> all = {{{{30, 125, 60}, {228, 244, 232}},
                                                         {{138, 90, 0}, {255, 242, 214}},
                                                         {{179, 38, 30}, {251, 228, 226}}}};
  return all[static_cast<std::size_t>(outcome)];
}

QFont letters(int size, bool bold = false) {
  QFont font;
  font.setPixelSize(size);  // the painter's unit is a point
  font.setBold(bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

/// A cell of a table's row.
struct Cell {
  QString text;
  qreal width = 0;
  QColor colour = ink;
  bool bold = false;
  bool right = false;
};

QPageSize paperSize() {
  const bool usesLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(usesLetter ? QPageSize::Letter : QPageSize::A4);
}

/// Where the pages go, one after the other.
class Paper {
 public:
  Paper() = default;
  Paper(const Paper&) = delete;
  Paper& operator=(const Paper&) = delete;
  virtual ~Paper() = default;
  /// Has `painter` draw on the next page, the first one included.
  virtual void turnOver(QPainter& painter) = 0;
  /// How many of its dots a point is.
  virtual qreal scale() const = 0;
};

class PdfPaper final : public Paper {
 public:
  PdfPaper(QByteArray& content, const QString& title) : buffer_(&content), writer_(&buffer_) {
    buffer_.open(QIODevice::WriteOnly);
    writer_.setTitle(title);
    writer_.setResolution(dotsPerInch);
    writer_.setPageLayout(QPageLayout(paperSize(), QPageLayout::Portrait, QMarginsF()));
  }
  void turnOver(QPainter& painter) override {
    if (painter.isActive())
      writer_.newPage();
    else
      painter.begin(&writer_);
  }
  qreal scale() const override { return dotsPerInch / pointsPerInch; }

 private:
  QBuffer buffer_;
  QPdfWriter writer_;
};

class PicturePaper final : public Paper {
 public:
  PicturePaper(std::vector<QImage>& pages, int width) : pages_(pages), width_(width) {}
  void turnOver(QPainter& painter) override {
    if (painter.isActive()) painter.end();
    const QSizeF page = paperSize().size(QPageSize::Point);
    pages_.emplace_back(QSize(width_, static_cast<int>(page.height() * scale())),
                        QImage::Format_RGB32);
    pages_.back().fill(Qt::white);
    painter.begin(&pages_.back());
  }
  qreal scale() const override { return width_ / paperSize().size(QPageSize::Point).width(); }

 private:
  std::vector<QImage>& pages_;
  int width_;
};

/// A sheet while it is drawn from top to bottom; what does not fit begins a new page.
class SheetPainter {
 public:
  /// `pages` is what the footer says of how many there are.
  SheetPainter(Paper& paper, const Sheet& sheet, const Density& density, int pages)
      : paper_(paper), sheet_(sheet), density_(density), pages_(pages) {
    begin();
  }

  int drawAll(const measure::Report* report) {
    drawHead();
    drawFacts();
    if (!sheet_.figures.empty()) drawFigures();
    drawRemarks();
    drawMapAndCalibration(report);
    drawSignatures();
    isComplete_ = page_ == 1;
    // What only those read who doubt. The second page has the lines, which want much room.
    isDense_ = true;
    const bool othersFit = y_ + heightOfOtherFigures() <= bottom();
    if (othersFit) drawOtherFigures();
    if (report != nullptr && !report->analysis.lines.empty()) {
      if (page_ == 1) turnOver();
      drawLines(*report, heightOfSteps() + (othersFit ? 0 : heightOfOtherFigures()));
    }
    drawSteps();
    if (!othersFit) drawOtherFigures();
    drawFooter();
    return page_;
  }
  /// Whether all that is signed stands on the first page.
  bool isComplete() const { return isComplete_; }

 private:
  qreal width() const { return pageSize_.width() - 2 * margin; }
  qreal bottom() const { return pageSize_.height() - margin - footerHeight; }

  void begin() {
    paper_.turnOver(painter_);
    painter_.scale(paper_.scale(), paper_.scale());
    painter_.setRenderHint(QPainter::Antialiasing);
    y_ = margin;
  }

  /// Goes to the next page where this much does not fit any more.
  void need(qreal height) {
    if (y_ + height > bottom()) turnOver();
  }
  void turnOver() {
    drawFooter();
    painter_.resetTransform();
    ++page_;
    begin();
  }

  qreal heightOf(const QString& text, qreal width, const QFont& font) const {
    return QFontMetricsF(font)
        .boundingRect(QRectF(0, 0, width, 1e4), Qt::TextWordWrap, text)
        .height();
  }
  /// Returns how high it is.
  qreal drawText(qreal x, qreal y, qreal width, const QString& text, const QFont& font,
                 const QColor& colour, int flags = Qt::AlignLeft) {
    const qreal height = heightOf(text, width, font);
    painter_.setFont(font);
    painter_.setPen(colour);
    painter_.drawText(QRectF(x, y, width, height), flags | Qt::TextWordWrap, text);
    return height;
  }
  void drawRule(qreal x, qreal y, qreal width, const QColor& colour, qreal thickness) {
    painter_.fillRect(QRectF(x, y - thickness / 2, width, thickness), colour);
  }

  /// Returns where what is below it begins.
  qreal drawHeading(qreal x, qreal y, qreal width, const QString& text) {
    y += drawText(x, y, width, text, letters(11, true), ink) + 2;
    drawRule(x, y, width, ink, 1.2);
    return y + 3;
  }
  /// With the gap above it.
  qreal heightOfHeading(const QString& text) const {
    return gap + heightOf(text, width(), letters(11, true)) + 5;
  }
  void heading(const QString& text, qreal content) {
    need(heightOfHeading(text) + content);
    y_ += gap;
    y_ = drawHeading(margin, y_, width(), text);
  }

  QFont fontOf(const Cell& cell) const {
    return letters(isDense_ ? density_.small : density_.body, cell.bold);
  }
  qreal rowPadding() const { return isDense_ ? density_.smallAbove : density_.above; }
  qreal heightOf(std::span<const Cell> row) const {
    qreal height = 0;
    for (const Cell& cell : row)
      height = std::max(height, heightOf(cell.text, cell.width - 6, fontOf(cell)));
    return height + 2 * rowPadding();
  }
  qreal drawRow(qreal x, qreal y, std::span<const Cell> row) {
    const qreal height = heightOf(row);
    qreal end = x;
    for (const Cell& cell : row) {
      drawText(end, y + rowPadding(), cell.width - 6, cell.text, fontOf(cell), cell.colour,
               cell.right ? Qt::AlignRight : Qt::AlignLeft);
      end += cell.width;
    }
    drawRule(x, y + height, end - x, rule, 0.5);
    return y + height;
  }
  void row(std::span<const Cell> cells) {
    need(heightOf(cells));
    y_ = drawRow(margin, y_, cells);
  }

  static std::array<Cell, 2> cellsOf(const Fact& fact, qreal width) {
    const qreal caption = std::min(width * 0.32, 90.0);
    return {{{shownText(fact.caption), caption, quiet}, {shownText(fact.text), width - caption}}};
  }
  qreal heightOf(const std::vector<Fact>& facts, qreal width) const {
    qreal height = 0;
    for (const Fact& fact : facts)
      height += heightOf(cellsOf(fact, width));
    return height;
  }
  qreal drawFactTable(qreal x, qreal y, qreal width, const std::vector<Fact>& facts) {
    for (const Fact& fact : facts)
      y = drawRow(x, y, cellsOf(fact, width));
    return y;
  }

  void drawHead() {
    constexpr qreal boxWidth = 150;
    constexpr qreal boxHeight = 54;
    const auto& [colour, ground] = coloursOf(outcomeLook(sheet_.outcome, sheet_.simulated));
    const QRectF box(pageSize_.width() - margin - boxWidth, y_, boxWidth, boxHeight);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ground);
    painter_.drawRoundedRect(box, 6, 6);
    drawText(box.x(), box.y() + 7, boxWidth, measure::wordOf(sheet_.outcome), letters(18, true),
             colour, Qt::AlignHCenter);
    drawText(box.x(), box.y() + 33, boxWidth, shownText(outcomeNote(sheet_)),
             letters(density_.body), colour, Qt::AlignHCenter);
    const qreal textWidth = width() - boxWidth - gap;
    qreal y = y_;
    y += drawText(margin, y, textWidth, shownText(say("commission", "Touch panel commissioning")),
                  letters(18, true), ink);
    y += drawText(margin, y + 2, textWidth, shownText(sheet_.subtitle), letters(density_.body),
                  quiet);
    if (!sheet_.reason.empty())
      y += drawText(margin, y + 6, textWidth, shownText(sheet_.reason),
                    letters(density_.body, true), colour);
    y_ = std::max(y, box.bottom());
  }

  void drawFacts() {
    y_ += gap;
    const qreal column = (width() - gap) / 2;
    const qreal right = margin + column + gap;
    const qreal below =
        drawHeading(margin, y_, column, shownText(say("commission", "Panel and controller")));
    drawHeading(right, y_, column, shownText(say("commission", "Run")));
    y_ = std::max(drawFactTable(margin, below, column, sheet_.panel),
                  drawFactTable(right, below, column, sheet_.conduct));
  }

  void drawFigures() {
    const qreal number = 104;
    const qreal outcome = 68;
    const qreal what = (width() - 2 * number - outcome) * 0.6;
    const qreal where = width() - 2 * number - outcome - what;
    const std::array<Cell, 5> captions = {
        {{shownText(say("commission", "What")), what, quiet},
         {shownText(say("commission", "Found")), number, quiet, false, true},
         {shownText(say("commission", "Limit")), number, quiet, false, true},
         {{}, outcome},
         {shownText(say("commission", "Where")), where, quiet}}};
    heading(shownText(say("commission", "Figures against limits")), 3 * heightOf(captions));
    row(captions);
    for (const SheetFigure& figure : sheet_.figures) {
      if (!figure.deciding) continue;
      const std::array<Cell, 5> cells = {
          {{shownText(figure.what), what},
           {shownText(figure.found), number, ink, false, true},
           {shownText(figure.limit), number, ink, false, true},
           {measure::wordOf(figure.outcome), outcome, coloursOf(figure.outcome).ink, true},
           {shownText(figure.how), where, quiet}}};
      row(cells);
    }
  }

  /// All of them keep their limits: what, found and limit are enough.
  using OtherFigure = std::array<Cell, 3>;
  std::vector<OtherFigure> otherFigures() const {
    const qreal column = (width() - gap) / 2;
    constexpr qreal number = 62;
    std::vector<OtherFigure> rows;
    for (const SheetFigure& figure : sheet_.figures)
      if (!figure.deciding)
        rows.push_back({{{shownText(figure.what), column - 2 * number},
                         {shownText(figure.found), number, ink, false, true},
                         {shownText(figure.limit), number, quiet, false, true}}});
    return rows;
  }
  qreal heightOf(std::span<const OtherFigure> rows) const {
    qreal height = 0;
    for (const OtherFigure& one : rows)
      height += heightOf(std::span<const Cell>(one));
    return height;
  }
  /// They stand in two columns.
  static auto columnsOf(std::span<const OtherFigure> rows) {
    const std::size_t half = (rows.size() + 1) / 2;
    return std::pair(rows.first(half), rows.subspan(half));
  }
  static QString otherCaption() {
    return shownText(say("commission", "Other figures, all within their limits"));
  }
  /// With their heading.
  qreal heightOfOtherFigures() const {
    const auto all = otherFigures();
    if (all.empty()) return 0;
    const auto [left, right] = columnsOf(all);
    return heightOfHeading(otherCaption()) + std::max(heightOf(left), heightOf(right));
  }
  void drawOtherFigures() {
    const auto all = otherFigures();
    if (all.empty()) return;
    const auto [left, right] = columnsOf(all);
    heading(otherCaption(), std::max(heightOf(left), heightOf(right)));
    const qreal top = y_;
    for (const auto& [x, part] : {std::pair{margin, left}, {margin + (width() + gap) / 2, right}}) {
      qreal y = top;
      for (const OtherFigure& one : part)
        y = drawRow(x, y, one);
      y_ = std::max(y_, y);
    }
  }

  void drawRemarks() {
    QString text;
    for (const Fact& remark : sheet_.remarks)
      text += shownText(remark.caption) + ": " + shownText(remark.text) + ". ";
    const auto& [colour, ground] = coloursOf(measure::Outcome::incomplete);
    const QFont font = letters(density_.body);
    const qreal height = heightOf(text, width() - 16, font) + 10;
    y_ += 8;
    need(height);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ground);
    painter_.drawRoundedRect(QRectF(margin, y_, width(), height), 4, 4);
    drawText(margin + 8, y_ + 5, width() - 16, text, font, colour);
    y_ += height;
  }

  void drawMapAndCalibration(const measure::Report* report) {
    const bool hasMap = report != nullptr && report->map.has_value();
    const qreal column = hasMap ? (width() - gap) / 2 : width();
    const qreal wholeMap =
        hasMap ? column * qreal{measure::mapPage.height} / qreal{measure::mapPage.width} : 0;
    constexpr qreal smallestMap = 0.7;  // of the whole one; it makes room for the signatures
    const qreal around = heightOfHeading("M") + signatureHeight;
    need(around + std::max(smallestMap * wholeMap, heightOf(sheet_.calibration, column)));
    const qreal mapHeight = std::min(wholeMap, bottom() - y_ - around);
    y_ += gap;
    const qreal right = hasMap ? margin + column + gap : margin;
    const qreal below =
        drawHeading(right, y_, column, shownText(say("commission", "Calibration and cause")));
    if (hasMap) {
      drawHeading(margin, y_, column, shownText(say("commission", "Error map")));
      painter_.setFont(letters(density_.body));  // a bold one would be kept
      paintPage(painter_, QRectF(margin, below, column, mapHeight), measure::mapPage,
                [&](ChartSurface& surface) {
                  measure::drawMap(surface, *report->map, report->measurement,
                                   measure::lettersOnHalfAPage);
                });
    }
    y_ = std::max(drawFactTable(right, below, column, sheet_.calibration), below + mapHeight);
  }

  void drawSignatures() {
    const qreal column = (width() - 2 * gap) / 2;
    need(signatureHeight);
    y_ += signatureRoom;
    const QFont font = letters(density_.body);
    const std::pair<qreal, std::string> lines[] = {
        {margin, say("commission", "Installed by")},
        {margin + column + 2 * gap, say("commission", "Accepted by")}};
    for (const auto& [x, words] : lines) {
      drawRule(x, y_, column, ink, 0.8);
      drawText(x, y_ + 3, column, shownText(words), font, quiet);
    }
    y_ += 18;
  }

  /// As large as what follows, which needs `below`, leaves it room on the page.
  void drawLines(const measure::Report& report, qreal below) {
    constexpr qreal shape = qreal{measure::linesPage.height} / qreal{measure::linesPage.width};
    const QString caption = shownText(say("commission", "Lines"));
    const qreal room = bottom() - y_ - heightOfHeading(caption) - below - 1;  // for rounding
    const qreal wide = std::clamp(room / shape, width() * density_.leastLines, width());
    const qreal height = wide * shape;
    heading(caption, height);
    painter_.setFont(letters(density_.body));
    paintPage(painter_, QRectF(margin + (width() - wide) / 2, y_, wide, height), measure::linesPage,
              [&](ChartSurface& surface) {
                measure::drawLinesPage(surface, report.measurement, report.analysis,
                                       report.verdict);
              });
    y_ += height;
  }

  std::array<Cell, 3> cellsOf(const SheetStep& step) const {
    const qreal caption = width() * 0.24;
    const qreal state = width() * 0.2;
    QStringList found;
    for (const std::string& text : step.found)
      found << shownText(text);
    return {{{shownText(step.caption), caption},
             {shownText(step.state), state, quiet},
             {found.join('\n'), width() - caption - state, quiet}}};
  }
  static QString stepsCaption() { return shownText(say("commission", "Steps")); }
  /// With their heading.
  qreal heightOfSteps() const {
    qreal height = heightOfHeading(stepsCaption());
    for (const SheetStep& step : sheet_.steps)
      height += heightOf(std::span<const Cell>(cellsOf(step)));
    return height;
  }
  void drawSteps() {
    heading(stepsCaption(), 60);
    for (const SheetStep& step : sheet_.steps)
      row(cellsOf(step));
  }

  void drawFooter() {
    const QString text =
        shownText(filled(say("commission", "%1   ·   page %2 of %3"),
                         {sheet_.subtitle, std::to_string(page_), std::to_string(pages_)}));
    drawText(margin, pageSize_.height() - margin - 10, width(), text, letters(density_.small),
             quiet);
  }

  Paper& paper_;
  const Sheet& sheet_;
  Density density_;
  QSizeF pageSize_ = paperSize().size(QPageSize::Point);
  QPainter painter_;
  int pages_;
  int page_ = 1;
  qreal y_ = 0;
  bool isDense_ = false;     ///< smaller letters, closer rows
  bool isComplete_ = false;  ///< the first page, with the signatures
};

struct Layout {
  int pages = 0;
  bool isComplete = false;  ///< the first page holds all that is signed
};

Layout tryOut(const Sheet& sheet, const measure::Report* report, const Density& density) {
  QByteArray tried;
  PdfPaper paper(tried, {});
  SheetPainter painter(paper, sheet, density, 0);
  const int pages = painter.drawAll(report);
  return {pages, painter.isComplete()};
}

void draw(Paper& paper, const Sheet& sheet, const measure::Report* report) {
  const Density* best = &std::end(densities)[-1];
  int pages = 0;
  for (const Density& density : densities) {
    const Layout layout = tryOut(sheet, report, density);
    if (layout.pages > mostPages || (pages > 0 && !layout.isComplete)) continue;
    best = &density;
    pages = layout.pages;
    if (layout.isComplete) break;
  }
  if (pages == 0) pages = tryOut(sheet, report, *best).pages;
  SheetPainter(paper, sheet, *best, pages).drawAll(report);
}

}  // namespace

QByteArray sheetPdf(const Sheet& sheet, const measure::Report* report) {
  QByteArray content;
  PdfPaper paper(content, shownText(sheet.subtitle));
  draw(paper, sheet, report);
  return content;
}

std::vector<QImage> sheetPictures(const Sheet& sheet, const measure::Report* report, int width) {
  std::vector<QImage> pages;
  PicturePaper paper(pages, width);
  draw(paper, sheet, report);
  return pages;
}

Status printSheet(const RunFolder& folder, const Sheet& sheet, const measure::Report* report) {
  if (auto printed = printHtml(folder, sheet, report); !printed) return printed;
  return folder.write("sheet.pdf", sheetPdf(sheet, report).toStdString());
}

Status printSheet(const RunFolder& folder) {
  auto run = folder.run();
  if (!run) return tl::unexpected(run.error());
  // Whoever is about to end the run has it printed first.
  if (nextStep(*run) == StepId::sheet)
    finish(*run, StepId::sheet, {}, measure::dateOf(std::chrono::system_clock::now()));
  const auto made = folder.report();
  if (!made) return tl::unexpected(made.error());
  const measure::Report* const report = *made ? &**made : nullptr;
  return printSheet(folder, sheetOf(*run, report), report);
}

}  // namespace touch::commission
