#include <algorithm>
#include <cstdio>

#include "ioshare/io_printable.h"
#include "programs/quorin_io/link_commands.h"
#include "programs/quorin_io/waiting.h"
#include "session/messages.h"

namespace {

class watcher {
public:
    watcher(io_observer& segment, const io_request& asked) : segment_(segment), asked_(asked) {
        for (const std::string& name : asked.operands) (void)known_signal(segment, name);
    }

    void run() {
        if (asked_.given(option_key::initial))
            print_patiently(lines([](const io_signal&) { return true; }));
        for (bool over = false; !over; pause_between_printed_looks()) {
            over = segment_.session_over();  // Looked at first, so that the last changes are told.
            if (!segment_.look()) continue;
            const std::string changes = lines([](const io_signal& each) { return each.changed; });
            if (!changes.empty()) print_patiently(changes);
        }
    }

private:
    template <class Chosen>
    std::string lines(Chosen chosen) const {
        std::string all;
        for (const io_signal& each : segment_.signals())
            if (chosen(each) && wanted(each.name))
                all += stamp() + io_printable(each.name) + '=' + std::to_string(each.value) + '\n';
        return all;
    }

    bool wanted(const std::string& name) const {
        return asked_.operands.empty() ||
               std::ranges::find(asked_.operands, name) != asked_.operands.end();
    }

    /// Real seconds since the start, where they are asked for.
    std::string stamp() const {
        if (!asked_.given(option_key::time)) return "";
        char text[32];
        std::snprintf(text, sizeof text, "%.3f ", since_.seconds());
        return text;
    }

    io_observer& segment_;
    const io_request& asked_;
    stopwatch since_;
};

}  // namespace

void watch_values(io_observer& segment, const io_request& asked) { watcher(segment, asked).run(); }
