#pragma once

namespace touch {

/// The drawing screens' common switches: made once in main() and passed by reference, so that a
/// screen opens as the last one was left.
struct DrawingSwitches {
  bool toleranceTest = false;  ///< strokes are recorded, and measured when they follow a guide line
  bool grid = false;           ///< the guide lines are shown

  /// What was recorded since the canvas was last cleared.
  struct Recorded {
    int strokes = 0;
    bool unsaved = false;  ///< some of them are in no drawing file
  };
  Recorded recorded{};
};

}  // namespace touch
