// Asking a session through its control socket.
#pragma once
#include <string>
#include <vector>

/// Sends the words to the session on segment `ident`, as one request, and prints its answer. The
/// session judges the words; only what cannot be sent is refused here. Throws a `failure` with the
/// session's own status and lines when it is not 0; `session_over` when the session has ended, or
/// was killed, before it answered; `refusal` when there is no such segment, or no such socket.
void ask_session(int ident, const std::vector<std::string>& words);

/// Has the session on segment `ident` look around, where it can: one that rests may not know yet
/// that somebody has attached, and would miss a short command. Never waits.
void wake_session(int ident);
