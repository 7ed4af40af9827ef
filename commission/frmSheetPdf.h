#pragma once

#include <QByteArray>

#include "commission/run_folder.h"
#include "commission/sheet.h"

namespace touch::commission {

/// The sheet on paper, A4, or Letter where that is usual. `report` is null when nothing was
/// measured.
QByteArray sheetPdf(const Sheet& sheet, const measure::Report* report);

/// Writes the sheet of the run in this folder as "sheet.pdf" and "sheet.html", in the user's
/// language.
[[nodiscard]] Status printSheet(const RunFolder& folder);

}  // namespace touch::commission
