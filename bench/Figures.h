#pragma once

#include "bench/Stage.h"

namespace quillmender::bench {

class Report;

/// On which desktop, how often each thing is measured, and how long the idle time is.
struct Effort {
    StageKind on = StageKind::x11;
    int repetitions = 20;
    int idleSeconds = 60;
    int typedKeys = 200;
    int openings = 1000;
};

/// Each measures one group of figures on a desktop of its own and adds them to the report.
/// They throw std::exception when something does not work at all.
void measureStart(Report &report, const Effort &effort);
void measureIdle(Report &report, const Effort &effort);
void measurePanel(Report &report, const Effort &effort);
void measureWindows(Report &report, const Effort &effort);
void measureSession(Report &report, const Effort &effort);
void measurePaste(Report &report, const Effort &effort);
void measureLargeText(Report &report, const Effort &effort);

} // namespace quillmender::bench
