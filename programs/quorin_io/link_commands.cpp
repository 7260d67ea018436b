#include "programs/quorin_io/link_commands.h"

#include "ioshare/io_printable.h"
#include "programs/quorin_io/conditions.h"
#include "programs/quorin_io/waiting.h"
#include "session/failure.h"
#include "session/messages.h"

const io_signal& known_signal(const io_observer& segment, const std::string& name) {
    const io_signal* const found = segment.find(name);
    if (!found) throw refusal("nom inconnu: " + io_printable(name));
    return *found;
}

const io_signal& known_output(const io_observer& segment, const std::string& name) {
    const io_signal* const found = segment.find(io_direction::output, name);
    if (!found) throw refusal("sortie inconnue: " + io_printable(name));
    return *found;
}

void refuse_after_the_end(const io_observer& segment) {
    if (segment.session_over()) throw failure{exit_status::session_over, "la session est terminée"};
}

void list_signals(io_observer& segment, const io_request&) {
    std::string lines;
    for (const io_signal& each : segment.signals()) {
        lines += each.direction == io_direction::input ? "entree\t" : "sortie\t";
        lines += io_printable(each.name) + '\t' + std::to_string(each.value) + '\n';
    }
    print_patiently(lines);
}

void get_values(io_observer& segment, const io_request& asked) {
    std::string lines;
    for (const std::string& name : asked.operands)
        lines += std::to_string(known_signal(segment, name).value) + '\n';
    print_patiently(lines);
}

void set_outputs(io_observer& segment, const io_request& asked) {
    const std::vector<assignment> wanted = read_assignments(segment, asked.operands);
    const condition_list until = read_conditions(segment, asked.of(option_key::until));
    refuse_after_the_end(segment);
    for (const assignment& each : wanted) segment.write(each.name, each.value);
    if (!until.empty()) wait_until_all_hold(segment, until, asked.seconds(option_key::timeout));
}

void reset_outputs(io_observer& segment, const io_request&) {
    refuse_after_the_end(segment);
    for (const io_signal& each : segment.signals())
        if (each.direction == io_direction::output) segment.write(each.name, 0);
}
