#include "programs/quorin_io/io_commands.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>

#include "session/whole_number.h"

namespace {

using steady = std::chrono::steady_clock;
using namespace io_commands;

constexpr useconds_t look_pause_us = 2'000;

struct assignment {
    std::string name;
    std::int32_t value;
};

volatile std::sig_atomic_t interrupted = 0;

void note_interruption(int) { interrupted = 1; }

void pause_between_looks() { usleep(look_pause_us); }

/// NAME=VALUE. A name may hold "=", a value may not.
assignment read_assignment(const std::string& word) {
    const std::size_t equals = word.rfind('=');
    if (equals == std::string::npos)
        throw failure{misunderstood, word + ": NOM=VALEUR est attendu"};
    const std::optional<std::int32_t> value =
        whole_number<std::int32_t>(std::string_view(word).substr(equals + 1));
    if (!value) throw failure{refused, word + ": la valeur n'est pas un entier de 32 bits"};
    return {word.substr(0, equals), *value};
}

std::vector<assignment> read_assignments(const std::vector<std::string>& words) {
    std::vector<assignment> all;
    for (const std::string& word : words) all.push_back(read_assignment(word));
    return all;
}

bool passed(steady::time_point since, double limit_s) {
    return std::chrono::duration<double>(steady::now() - since).count() >= limit_s;
}

/// What the link shows under a name: an input before an output, the last of those named alike, as
/// the panel reads them.
std::optional<std::int32_t> value_of(const std::vector<io_entry>& entries,
                                     const std::string& name) {
    for (const io_direction direction : {io_direction::input, io_direction::output}) {
        const auto found = std::find_if(
            entries.rbegin(), entries.rend(),
            [&](const io_entry& each) { return each.direction == direction && each.name == name; });
        if (found != entries.rend()) return found->value;
    }
    return std::nullopt;
}

void require(const std::vector<io_entry>& entries, io_direction direction,
             const std::string& name) {
    const bool there = std::ranges::any_of(entries, [&](const io_entry& each) {
        return each.direction == direction && each.name == name;
    });
    if (!there) {
        throw failure{
            refused,
            (direction == io_direction::input ? "entrée inconnue: " : "sortie inconnue: ") + name};
    }
}

void refuse_after_the_end(const segment_view& segment) {
    if (segment.session_over()) throw failure{session_ended, "la session est terminée"};
}

}  // namespace

int io_commands::list(const segment_view& segment) {
    for (const io_entry& each : segment.entries()) {
        std::cout << (each.direction == io_direction::input ? "entree" : "sortie") << '\t'
                  << each.name << '\t' << each.value << '\n';
    }
    return done;
}

int io_commands::get(const segment_view& segment, const std::vector<std::string>& names) {
    const std::vector<io_entry> entries = segment.entries();
    std::string lines;
    for (const std::string& name : names) {
        const std::optional<std::int32_t> value = value_of(entries, name);
        if (!value) throw failure{refused, "nom inconnu: " + name};
        lines += std::to_string(*value) + '\n';
    }
    std::cout << lines;
    return done;
}

int io_commands::set(segment_view& segment, const std::vector<std::string>& words) {
    const std::vector<assignment> wanted = read_assignments(words);
    const std::vector<io_entry> entries = segment.entries();
    for (const assignment& each : wanted) require(entries, io_direction::output, each.name);
    refuse_after_the_end(segment);
    for (const assignment& each : wanted) segment.write_output(each.name, each.value);
    return done;
}

int io_commands::wait(const segment_view& segment, const std::vector<std::string>& words,
                      std::optional<double> timeout_s) {
    const std::vector<assignment> wanted = read_assignments(words);
    for (const assignment& each : wanted)
        require(segment.entries(), io_direction::input, each.name);
    for (const auto start = steady::now();;) {
        // The end is looked for first: values that still stand after it are nobody's.
        refuse_after_the_end(segment);
        const std::vector<io_entry> entries = segment.entries();
        const bool all = std::ranges::all_of(wanted, [&](const assignment& each) {
            return value_of(entries, each.name) == each.value;
        });
        if (all) return done;
        if (timeout_s && passed(start, *timeout_s)) throw failure{time_over, "délai écoulé"};
        pause_between_looks();
    }
}

int io_commands::pulse(segment_view& segment, const std::string& name, double length_s) {
    require(segment.entries(), io_direction::output, name);
    refuse_after_the_end(segment);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, note_interruption);
    const auto start = steady::now();
    segment.write_output(name, 1);
    while (!passed(start, length_s) && !interrupted && !segment.session_over())
        pause_between_looks();
    segment.write_output(name, 0);
    refuse_after_the_end(segment);
    return done;
}

int io_commands::watch(const segment_view& segment, const std::vector<std::string>& names) {
    std::vector<io_entry> last = segment.entries();
    for (const std::string& name : names) {
        if (!value_of(last, name)) throw failure{refused, "nom inconnu: " + name};
    }
    const auto wanted = [&](const std::string& name) {
        return names.empty() || std::ranges::find(names, name) != names.end();
    };
    for (bool over = false; !over; pause_between_looks()) {
        over = segment.session_over();  // Looked at first, so that the last changes are told.
        std::vector<io_entry> now = segment.entries();
        for (std::size_t i = 0; i < now.size() && i < last.size(); ++i) {
            if (now[i] != last[i] && wanted(now[i].name)) {
                std::cout << now[i].name << '=' << now[i].value << std::endl;
            }
        }
        last = std::move(now);
    }
    return done;
}
