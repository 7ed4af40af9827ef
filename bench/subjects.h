#pragma once

namespace touch::bench {

// Each subject registers its benchmarks; bars.h says what is expected of them.

/// From the start of the programs to the first painted window, or to the end.
void registerStart();
/// From bytes to touch reports.
void registerDecoder();
/// One operation of a driver, in the program and in a host.
void registerDriver();
/// One move of the pointer on the drawing canvas.
void registerCanvas();
/// Reading and writing drawing files.
void registerDrawingFile();
/// Judging the lines of a panel.
void registerMeasure();
/// Summing up the bundles of many panels.
void registerFleet();
/// What an exchange takes beyond its stated waits.
void registerExchange();
/// A minute in which nothing happens.
void registerRest();
/// From bytes on the port to painted dots.
void registerRawDrawing();
/// Opening a recording of a day and going to its end.
void registerRecording();
/// What a megabyte of a flood costs.
void registerFlood();

}  // namespace touch::bench
