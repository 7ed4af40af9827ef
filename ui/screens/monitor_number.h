#pragma once

namespace touch {

/// Shows a large number on each monitor, counted from 1, for a few seconds.
void showMonitorNumbers();

}  // namespace touch
