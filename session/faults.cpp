#include "session/faults.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "session/keyed_rows.h"

namespace {

constexpr std::int64_t ns_per_s = 1'000'000'000, delay_ns = ns_per_s / 2,
                       flicker_ns = ns_per_s / 10;
constexpr double longest_step_s = 3600;

/// What a fault goes by when it changes the value of a sensor or of a command: of a sensor also
/// what it told half a second ago, and how far into its second it is read.
struct truth {
    std::int32_t value, late = 0;
    std::int64_t ns_of_second = 0;
};

struct fault_row {
    fault_kind key;
    std::string_view word;
    fault_place place;
    std::int32_t (*changed)(const truth&);
    /// Whether the model has to slow its actuator down.
    bool slows = false;
};

// clang-format off
constexpr fault_row rows[] = {
    {fault_kind::stuck0,   "stuck0",   fault_place::sensor,   [](const truth&) { return 0; }},
    {fault_kind::stuck1,   "stuck1",   fault_place::sensor,   [](const truth&) { return 1; }},
    {fault_kind::inverted, "inverted", fault_place::sensor,   [](const truth& real) { return real.value == 0 ? 1 : 0; }},
    {fault_kind::late,     "late",     fault_place::sensor,   [](const truth& real) { return real.late; }},
    {fault_kind::flicker,  "flicker",  fault_place::sensor,   [](const truth& real) { return real.ns_of_second < flicker_ns ? 0 : real.value; }},
    {fault_kind::dead,     "dead",     fault_place::actuator, [](const truth&) { return 0; }},
    {fault_kind::slow,     "slow",     fault_place::actuator, [](const truth& real) { return real.value; }, true},
};
// clang-format on
static_assert(one_row_each(rows));

using fault_list = std::vector<std::optional<fault_kind>>;

std::int32_t with_fault(const std::optional<fault_kind>& fault, const truth& real) {
    return fault ? row_of(rows, *fault).changed(real) : real.value;
}

bool slows(const std::optional<fault_kind>& fault) { return fault && row_of(rows, *fault).slows; }

template <typename List>
bool exists(int place, const List& list) {
    return place >= 0 && std::cmp_less(place, list.size());
}

bool has(name_span names, std::string_view name) { return index_of(names, name) >= 0; }

bool offers(const station_model& model, const fault_row& row, std::string_view actuator) {
    return !row.slows || model.can_be_slow(index_of(model.outputs(), actuator));
}

template <typename Filter>
std::string words_where(Filter filter) {
    std::string words;
    for (const fault_row& row : rows)
        if (filter(row)) words.append(words.empty() ? "" : ", ").append(row.word);
    return words;
}

// "ses pannes sont stuck0, stuck1, inverted".
std::string faults_are(const std::string& words) {
    return (words.find(',') == std::string::npos ? "sa seule panne est " : "ses pannes sont ") +
           words;
}

// Why no fault of that name can be read; `kind` is what was asked for, if it is one.
std::string objection(const std::string& name, const std::optional<fault_kind>& kind,
                      const station_model& model) {
    if (has(model.inputs(), name))
        return name + " est un capteur : " + faults_are(fault_kind_words(fault_place::sensor));
    if (!has(model.outputs(), name))
        return "la station n'a ni capteur ni actionneur nomm\xC3\xA9 \"" + name + '"';
    const std::string possible = faults_are(words_where([&](const fault_row& row) {
        return row.place == fault_place::actuator && offers(model, row, name);
    }));
    if (slows(kind)) return name + " ne peut pas \xC3\xAAtre lent : " + possible;
    return name + " est un actionneur : " + possible;
}

}  // namespace

std::string_view fault_kind_word(fault_kind kind) { return row_of(rows, kind).word; }

std::optional<fault_kind> fault_kind_called(std::string_view word) {
    for (const fault_row& row : rows)
        if (word == row.word) return row.key;
    return std::nullopt;
}

fault_place place_of(fault_kind kind) { return row_of(rows, kind).place; }

std::string fault_kind_words(fault_place place) {
    return words_where([place](const fault_row& row) { return row.place == place; });
}

bool fault_fits(std::string_view name, fault_kind kind, const station_model& model) {
    const fault_row& row = row_of(rows, kind);
    if (has(model.inputs(), name)) return row.place == fault_place::sensor;
    return has(model.outputs(), name) && row.place == fault_place::actuator &&
           offers(model, row, name);
}

std::optional<station_fault> parse_fault(std::string_view text, const station_model& model,
                                         std::string& reason) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string_view::npos) {
        reason = std::string(text) +
                 ": une panne s'\xC3\xA9"
                 "crit NOM=PANNE";
        return std::nullopt;
    }
    const std::string name(text.substr(0, equals));
    const std::optional<fault_kind> kind = fault_kind_called(text.substr(equals + 1));
    if (kind && fault_fits(name, *kind, model)) return station_fault{name, *kind};
    reason = std::string(text) + ": " + objection(name, kind, model);
    return std::nullopt;
}

void delay_line::take(std::int64_t now_ns, int value) {
    if (value != last_) on_the_way_.push_back({now_ns + delay_ns, value});
    last_ = value;
    for (; !on_the_way_.empty() && on_the_way_.front().due_ns <= now_ns; on_the_way_.pop_front())
        told_ = on_the_way_.front().value;
}

faulty_station::faulty_station(station_model& inside)
    : inside_(inside),
      commands_(inside.outputs().size()),
      sensor_faults_(inside.inputs().size()),
      actuator_faults_(inside.outputs().size()),
      delay_lines_(inside.inputs().size()) {}

bool faulty_station::set_fault(std::string_view name, fault_kind kind) {
    if (!fault_fits(name, kind, inside_)) return false;
    change_fault(name, kind);
    return true;
}

bool faulty_station::end_fault(std::string_view name) {
    const fault* const present = fault_of(name);
    if (present == nullptr || !*present) return false;
    change_fault(name, std::nullopt);
    return true;
}

void faulty_station::change_fault(std::string_view name, fault wanted) {
    fault& present = *fault_of(name);
    if (present == wanted) return;
    const int input = index_of(inputs(), name), output = index_of(outputs(), name);
    if (input >= 0) delay_lines_[static_cast<std::size_t>(input)] = delay_line(sensor(input));
    if (slows(present) != slows(wanted)) inside_.set_slow(output, slows(wanted));
    present = wanted;
    pass_command(output);
}

std::vector<station_fault> faulty_station::faults() const {
    std::vector<station_fault> found;
    const auto collect = [&found](const fault_list& faults, name_span names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (faults[i]) found.push_back({std::string(names[i]), *faults[i]});
    };
    collect(sensor_faults_, inputs());
    collect(actuator_faults_, outputs());
    return found;
}

void faulty_station::set_command(int output, std::int32_t value) {
    if (!exists(output, commands_)) return;
    commands_[static_cast<std::size_t>(output)] = value;
    pass_command(output);
}

void faulty_station::step(double seconds) {
    inside_.step(seconds);
    if (seconds > 0) now_ns_ += std::llround(std::min(seconds, longest_step_s) * 1e9);
    for (std::size_t i = 0; i < sensor_faults_.size(); ++i)
        if (sensor_faults_[i]) delay_lines_[i].take(now_ns_, inside_.sensor(static_cast<int>(i)));
}

int faulty_station::sensor(int input) const {
    if (!exists(input, sensor_faults_)) return 0;
    const auto i = static_cast<std::size_t>(input);
    return with_fault(sensor_faults_[i],
                      {inside_.sensor(input), delay_lines_[i].told(), now_ns_ % ns_per_s});
}

bool faulty_station::restart() {
    if (!inside_.restart()) return false;
    commands_.assign(commands_.size(), 0);
    sensor_faults_.assign(sensor_faults_.size(), {});
    actuator_faults_.assign(actuator_faults_.size(), {});
    delay_lines_.assign(delay_lines_.size(), delay_line());
    now_ns_ = 0;
    return true;
}

faulty_station::fault* faulty_station::fault_of(std::string_view name) {
    if (const int input = index_of(inputs(), name); input >= 0)
        return &sensor_faults_[static_cast<std::size_t>(input)];
    if (const int output = index_of(outputs(), name); output >= 0)
        return &actuator_faults_[static_cast<std::size_t>(output)];
    return nullptr;
}

void faulty_station::pass_command(int output) {
    if (!exists(output, commands_)) return;
    const auto i = static_cast<std::size_t>(output);
    inside_.set_command(output, with_fault(actuator_faults_[i], {commands_[i]}));
}
