// What ends a session from outside: a signal, or the end of a process on which it depends.
#pragma once
#include <sys/types.h>

#include "ioshare/io_segment.h"

namespace end_signals {

/// Catches SIGINT, SIGTERM, SIGHUP (unless ignored, as under nohup) and the ends of children, and
/// ignores SIGPIPE. To be called before any child or segment is made, so that no moment is open.
void watch();

/// From now on the handler itself announces an end on this segment. Whoever holds its lock may be
/// dead: the announcement is what ends this process's own wait for it.
void announce_on(io_segment& segment);

/// The session ends with this child (two at most). Other children may come and go: a program that
/// a shell replaces itself with inherits the shell's.
void depend_on(pid_t child);

/// Asks for the end, as a signal does.
void ask();

/// Whether the end was asked for.
[[nodiscard]] bool asked();

/// Whether the session is to end: asked for, or for the end of a child.
[[nodiscard]] bool due();

/// A descriptor that can be read once anything of this has happened, until `settle`; for whoever
/// waits.
int descriptor();
/// Makes that descriptor silent again: what happened was seen.
void settle();

}  // namespace end_signals
