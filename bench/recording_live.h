// What the benchmark of recordings measures on live sessions.
#pragma once

/// Prints what a recorded session costs beside one that is not, and its memory.
void measure_live_sessions();
