#pragma once

#include <QByteArray>

#include "commission/run/run_folder.h"
#include "commission/sheet/sheet.h"

namespace touch::commission {

/// The sheet on paper, A4, or Letter where that is usual. `report` is null when nothing was
/// measured.
QByteArray sheetPdf(const Sheet& sheet, const measure::Report* report);

/// Writes it as "sheet.pdf" and "sheet.html", in the user's language.
[[nodiscard]] Status printSheet(const RunFolder& folder, const Sheet& sheet,
                                const measure::Report* report);
/// The sheet of the run in this folder.
[[nodiscard]] Status printSheet(const RunFolder& folder);

}  // namespace touch::commission
