#include "session/session_end.h"

#include "ioshare/io_clocks.h"
#include "ioshare/io_lock.h"
#include "session/end_signals.h"
#include "session/step_clock.h"

session_end::session_end(std::optional<double> duration_s, supervisor& guard,
                         const io_segment& segment)
    : duration_s_(duration_s), guard_(guard), segment_(segment) {}

void session_end::depend_on(child_process& child, const std::string& what,
                            const std::string& well_ended) {
    child_ = &child;
    what_ = what;
    well_ended_ = well_ended;
    end_signals::depend_on(child.id());
}

bool session_end::duration_over(std::int64_t ms) const {
    return duration_s_ && static_cast<double>(ms) / 1000 >= *duration_s_ - step_s / 2;
}

void session_end::ask(const std::string& words) {
    if (asked_words_.empty()) asked_words_ = words;
}

bool session_end::due(std::int64_t ms) const {
    return !asked_words_.empty() || end_signals::due() || duration_over(ms);
}

bool session_end::look(std::int64_t ms) {
    if (!over()) words_ = cause(ms);
    return over();
}

std::string session_end::child_cause() {
    child_gone_ = true;
    const std::string how = child_->bad_end();
    return how.empty() ? well_ended_ : what_ + " (" + how + ")";
}

// The signals' own announcement comes last: it is on the segment before the cause is known here.
std::string session_end::cause(std::int64_t ms) {
    if (end_signals::asked())
        return "fin demand\xC3\xA9"
               "e";
    if (!asked_words_.empty()) return asked_words_;
    if (duration_over(ms))
        return "dur\xC3\xA9"
               "e \xC3\xA9"
               "coul\xC3\xA9"
               "e";
    if (end_signals::due()) {
        if (guard_.gone()) return "le processus de garde a disparu";
        if (child_ && child_->ended()) return child_cause();
    }
    if (!io_lock_is_sound(segment_)) return "le verrou de la liaison a été abîmé";
    if (io_last_publication(io_read_clock(segment_.inputs_clock)) && !end_signals::due())
        return "un client a termin\xC3\xA9 la session";
    return "";
}
