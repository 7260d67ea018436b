#include "programs/quorin_io/conditions.h"

#include "ioshare/io_printable.h"
#include "programs/quorin_io/link_commands.h"
#include "session/failure.h"
#include "session/whole_number.h"

namespace {

/// The value behind the last "=" of a word, and how long the name before it is.
assignment split(const std::string& word) {
    const std::size_t equals = word.rfind('=');
    const std::optional<std::int32_t> value =
        whole_number<std::int32_t>(std::string_view(word).substr(equals + 1));
    if (!value) throw refusal(io_printable(word) + ": la valeur n'est pas un entier de 32 bits");
    return {word.substr(0, equals), *value};
}

}  // namespace

std::vector<assignment> read_assignments(const io_observer& segment,
                                         const std::vector<std::string>& words) {
    std::vector<assignment> all;
    for (const std::string& word : words) all.push_back(split(word));
    for (const assignment& each : all) (void)known_output(segment, each.name);
    return all;
}

condition::condition(const io_observer& segment, const std::string& word) {
    assignment wanted = split(word);
    equal_ = !wanted.name.ends_with('!');
    if (!equal_) wanted.name.pop_back();
    value_ = wanted.value;
    signal_ = &known_signal(segment, wanted.name);
}

std::string condition::told() const {
    return io_printable(signal_->name) + (equal_ ? "=" : "!=") + std::to_string(value_) +
           " (valeur " + std::to_string(signal_->value) + ")";
}

condition_list read_conditions(const io_observer& segment, const std::vector<std::string>& words) {
    condition_list all;
    for (const std::string& word : words) all.emplace_back(segment, word);
    return all;
}

std::vector<std::string> told_missing(const condition_list& conditions) {
    std::vector<std::string> all;
    for (const condition& each : conditions)
        if (!each.holds()) all.push_back(each.told());
    return all;
}
