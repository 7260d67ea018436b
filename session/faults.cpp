#include "session/faults.h"

#include <utility>

#include "session/keyed_rows.h"

namespace {

/// What a fault goes by when it changes the value of a sensor or of a command.
struct truth {
    std::int32_t value;
};

struct fault_row {
    fault_kind key;
    std::string_view word;
    fault_place place;
    std::int32_t (*changed)(const truth&);
};

// clang-format off
constexpr fault_row rows[] = {
    {fault_kind::stuck0,   "stuck0",   fault_place::sensor,   [](const truth&) { return 0; }},
    {fault_kind::stuck1,   "stuck1",   fault_place::sensor,   [](const truth&) { return 1; }},
    {fault_kind::inverted, "inverted", fault_place::sensor,   [](const truth& real) { return real.value == 0 ? 1 : 0; }},
    {fault_kind::dead,     "dead",     fault_place::actuator, [](const truth&) { return 0; }},
};
// clang-format on
static_assert(one_row_each(rows));

using fault_list = std::vector<std::optional<fault_kind>>;

std::int32_t with_fault(const std::optional<fault_kind>& fault, std::int32_t value) {
    return fault ? row_of(rows, *fault).changed({value}) : value;
}

template <typename List>
bool exists(int place, const List& list) {
    return place >= 0 && std::cmp_less(place, list.size());
}

bool has(name_span names, std::string_view name) { return index_of(names, name) >= 0; }

std::optional<fault_kind> kind_named(std::string_view word) {
    for (const fault_row& row : rows)
        if (word == row.word) return row.key;
    return std::nullopt;
}

// "est un capteur : ses pannes sont stuck0, stuck1, inverted".
std::string kinds_sentence(fault_place place) {
    const std::string words = fault_kind_words(place);
    return std::string(place == fault_place::sensor ? "est un capteur" : "est un actionneur") +
           (words.find(',') == std::string::npos ? " : sa seule panne est "
                                                 : " : ses pannes sont ") +
           words;
}

// Why no fault of that name can be read.
std::string objection(const std::string& name, name_span inputs, name_span outputs) {
    if (has(inputs, name)) return name + ' ' + kinds_sentence(fault_place::sensor);
    if (has(outputs, name)) return name + ' ' + kinds_sentence(fault_place::actuator);
    return "la station n'a ni capteur ni actionneur nomm\xC3\xA9 \"" + name + '"';
}

}  // namespace

std::string_view fault_kind_word(fault_kind kind) { return row_of(rows, kind).word; }

std::string fault_kind_words(fault_place place) {
    std::string words;
    for (const fault_row& row : rows)
        if (row.place == place) words.append(words.empty() ? "" : ", ").append(row.word);
    return words;
}

bool fault_fits(std::string_view name, fault_kind kind, name_span inputs, name_span outputs) {
    const bool is_sensors = row_of(rows, kind).place == fault_place::sensor;
    return has(inputs, name) ? is_sensors : has(outputs, name) && !is_sensors;
}

std::optional<station_fault> parse_fault(std::string_view text, name_span inputs, name_span outputs,
                                         std::string& reason) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        reason = std::string(text) +
                 ": une panne s'\xC3\xA9"
                 "crit NOM=PANNE";
        return std::nullopt;
    }
    const std::string name(text.substr(0, equals));
    const std::optional<fault_kind> kind = kind_named(text.substr(equals + 1));
    if (kind && fault_fits(name, *kind, inputs, outputs)) return station_fault{name, *kind};
    reason = std::string(text) + ": " + objection(name, inputs, outputs);
    return std::nullopt;
}

faulty_station::faulty_station(station_model& inside)
    : inside_(inside),
      commands_(inside.outputs().size()),
      sensor_faults_(inside.inputs().size()),
      actuator_faults_(inside.outputs().size()) {}

bool faulty_station::set_fault(std::string_view name, fault_kind kind) {
    if (!fault_fits(name, kind, inputs(), outputs())) return false;
    *fault_of(name) = kind;
    pass_command(index_of(outputs(), name));
    return true;
}

bool faulty_station::end_fault(std::string_view name) {
    std::optional<fault_kind>* fault = fault_of(name);
    if (fault == nullptr || !*fault) return false;
    fault->reset();
    pass_command(index_of(outputs(), name));
    return true;
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

int faulty_station::sensor(int input) const {
    if (!exists(input, sensor_faults_)) return 0;
    return with_fault(sensor_faults_[static_cast<std::size_t>(input)], inside_.sensor(input));
}

std::optional<fault_kind>* faulty_station::fault_of(std::string_view name) {
    if (const int input = index_of(inputs(), name); input >= 0)
        return &sensor_faults_[static_cast<std::size_t>(input)];
    if (const int output = index_of(outputs(), name); output >= 0)
        return &actuator_faults_[static_cast<std::size_t>(output)];
    return nullptr;
}

void faulty_station::pass_command(int output) {
    if (!exists(output, commands_)) return;
    const auto i = static_cast<std::size_t>(output);
    inside_.set_command(output, with_fault(actuator_faults_[i], commands_[i]));
}
