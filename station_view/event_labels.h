// Kinds of events, and what a session tells of itself, as the window shows them.
#pragma once
#include <string>

#include "lesson/bilingual.h"
#include "session/station_events.h"

/// What a kind of event is called: "entrée".
[[nodiscard]] const char* event_kind_label(event_kind kind, language in);
/// An event's name: the session's own ones, "bonnes", have one in each language; the others, of
/// inputs and the like, are what they are.
[[nodiscard]] std::string event_name_label(event_kind kind, const std::string& name, language in);
