// What a student can do about an incident.
#pragma once
#include <string>
#include <string_view>

#include "lesson/bilingual.h"
#include "workcell/incidents.h"

struct told_incident {
    /// What happened, and what can be done about it, one sentence each. The advice is empty for an
    /// incident that is not the ZK4 station's.
    std::string what, advice;
};

/// Both for one kind.
[[nodiscard]] told_incident tell_incident(station::incident kind, language in);
/// Both for an incident as the events tell it, in French.
[[nodiscard]] told_incident tell_incident(std::string_view text, language in);
