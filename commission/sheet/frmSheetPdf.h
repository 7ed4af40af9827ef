#pragma once

#include <QByteArray>
#include <QImage>
#include <vector>

#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"

namespace touch::commission {

/// The sheet on paper, A4, or Letter where that is usual. `report` is null when nothing was
/// measured.
QByteArray sheetPdf(const Sheet& sheet, const measure::Report* report);

/// The same pages as pictures to be looked at on a screen, `width` pixels wide.
std::vector<QImage> sheetPictures(const Sheet& sheet, const measure::Report* report, int width);

/// Writes it as "sheet.pdf" and "sheet.html", in the user's language.
[[nodiscard]] Status printSheet(const RunFolder& folder, const Sheet& sheet,
                                const measure::Report* report);
/// The sheet of the run in this folder.
[[nodiscard]] Status printSheet(const RunFolder& folder);

}  // namespace touch::commission
