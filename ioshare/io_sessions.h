// The sessions that run on this machine.
#pragma once
#include <optional>

/// The identifier of the youngest living session of this user: a segment of the link's size that
/// the process's user owns, whose maker lives, holds it, and has announced no end. Nothing when
/// there is none. Looks at each candidate as an observer does.
[[nodiscard]] std::optional<int> io_youngest_session();
