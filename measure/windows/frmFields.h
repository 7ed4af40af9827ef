#pragma once

class QFormLayout;
class QString;
class QWidget;

namespace touch {
class FingerSpinBox;
}

// What the pages that ask for a panel have in common.
namespace touch::measure {

/// A width or a height of a panel in mm.
FingerSpinBox* makePanelLength(const char* name, const QString& says);

/// A row of a form; the key that `caption` marks leads to `buddy`.
void addField(QFormLayout& form, const QString& caption, QWidget* field, QWidget* buddy);

}  // namespace touch::measure
