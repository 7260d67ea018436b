#include <signal.h>
#include <unistd.h>

#include "programs/quorin_io/link_commands.h"
#include "programs/quorin_io/waiting.h"

namespace {

constexpr double default_length_s = 0.2;

// What the handler ends.
io_observer* pulsed = nullptr;
const char* pulsed_output = nullptr;

void end_pulse(int number) {
    pulsed->write(pulsed_output, 0);
    _exit(128 + number);
}

/// Every signal that can be caught ends the pulse, those that stop a process too: it would stop
/// with the output on.
void end_at_any_signal() {
    struct sigaction action {};
    action.sa_handler = end_pulse;
    sigfillset(&action.sa_mask);
    for (int number = 1; number <= SIGRTMAX; ++number) {
        struct sigaction before {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

}  // namespace

void pulse_output(io_observer& segment, const io_request& asked) {
    const std::string& name = asked.operands.front();
    (void)known_output(segment, name);
    refuse_after_the_end(segment);
    pulsed = &segment;
    pulsed_output = name.c_str();
    end_at_any_signal();
    const double length_s = asked.seconds(option_key::length).value_or(default_length_s);
    const stopwatch since;
    segment.write(name, 1);
    while (since.seconds() < length_s && !segment.session_over()) pause_between_looks();
    segment.write(name, 0);
    refuse_after_the_end(segment);
}
