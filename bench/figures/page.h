#pragma once

#include <span>
#include <string>

#include "bench/figures/bars.h"

namespace touch::bench {

/// The figures of all bars as a chapter in Markdown, with the machine that they come from.
std::string figuresChapter(std::span<const Bar> bars, const Figures& figures);

}  // namespace touch::bench
