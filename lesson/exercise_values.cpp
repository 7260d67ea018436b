#include "lesson/exercise_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "recording/recorded_text.h"
#include "session/desk.h"
#include "session/whole_number.h"

namespace {

/// As much as recordings hold.
constexpr std::int64_t longest_s = 1'000'000'000;

bool is_control(char each) { return static_cast<unsigned char>(each) < 32 || each == 127; }

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\n") == std::string::npos;
}

/// What an entry holds as text; null, and an objection, when it is none.
const std::string* text_in(exercise_reading& reading, const toml_entry& entry) {
    const auto* text = std::get_if<std::string>(&entry.value.is);
    if (!text) reading.object(entry, "un texte entre guillemets est attendu");
    return text;
}

/// Only the texts of a list; an objection when there is anything else.
std::vector<std::string> texts_in(exercise_reading& reading, const toml_entry& entry) {
    std::vector<std::string> texts;
    const auto* list = std::get_if<toml_list>(&entry.value.is);
    bool all = list != nullptr;
    for (const toml_value& each : list ? *list : toml_list()) {
        const auto* text = std::get_if<std::string>(&each.is);
        if (text)
            texts.push_back(*text);
        else
            all = false;
    }
    if (!all) reading.object(entry, "une liste de textes est attendue: [\"NOM=...\"]");
    return texts;
}

/// Rounded on the decimal digits: those that are written, not those of the nearest binary number.
std::int64_t milliseconds(double seconds) {
    std::array<char, 400> text{};
    const char* const end =
        std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed)
            .ptr;
    const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.data()));
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string thousandths(digits.substr(std::min(point + 1, digits.size())));
    thousandths.resize(4, '0');
    const std::int64_t whole = whole_number<std::int64_t>(digits.substr(0, point)).value_or(0);
    const int parts = whole_number<int>(thousandths).value_or(0);
    return whole * 1000 + (parts + 5) / 10;
}

std::optional<double> seconds_in(const toml_entry& entry) {
    std::optional<double> seconds;
    if (const auto* whole = std::get_if<std::int64_t>(&entry.value.is))
        seconds = static_cast<double>(*whole);
    if (const auto* real = std::get_if<double>(&entry.value.is)) seconds = *real;
    // Also false for what is no number.
    return seconds && *seconds >= 0 && *seconds <= longest_s ? seconds : std::nullopt;
}

struct place_row {
    condition_place key;
    /// What its values are called when another one is asked for.
    const char* values;
    bool binary;
};

constexpr place_row places[] = {
    {condition_place::input, "une entrée vaut 0 ou 1", true},
    {condition_place::output, "une sortie vaut un entier de 32 bits", false},
    {condition_place::desk, "le pupitre vaut 0 ou 1", true},
};

/// The thing of that name, with the value 0: the desk first, then an input.
std::optional<exercise_condition> thing_named(const std::string& name, const station_model& model) {
    using enum condition_place;
    if (const desk_row* button = desk_button_named(name))
        return exercise_condition{desk, name, 0, static_cast<int>(button->key)};
    if (const int place = index_of(model.inputs(), name); place >= 0)
        return exercise_condition{input, name, 0, place};
    if (const int place = index_of(model.outputs(), name); place >= 0)
        return exercise_condition{output, name, 0, place};
    return std::nullopt;
}

std::optional<exercise_condition> condition_of(exercise_reading& reading, const toml_entry& entry,
                                               const std::string& text) {
    const auto refuse = [&](const std::string& why) {
        reading.object(entry, text + ": " + why);
        return std::nullopt;
    };
    const std::size_t equals = text.rfind('=');
    if (equals == std::string::npos) return refuse("une condition s'écrit NOM=VALEUR");
    const std::string name = text.substr(0, equals);
    std::optional<exercise_condition> condition = thing_named(name, reading.model);
    if (!condition) return refuse("la station n'a ni entrée ni sortie nommée \"" + name + '"');
    const auto value = whole_number<std::int32_t>(text.substr(equals + 1));
    const place_row& place = places[static_cast<std::size_t>(condition->place)];
    if (!value || (place.binary && *value != 0 && *value != 1)) return refuse(place.values);
    condition->value = *value;
    return condition;
}

/// Adds a condition to those of other names; one that is there already changes nothing.
void add_condition(exercise_reading& reading, const toml_entry& entry,
                   const exercise_condition& wanted, std::vector<exercise_condition>& to) {
    const auto same = std::ranges::find(to, wanted.name, &exercise_condition::name);
    if (same == to.end())
        to.push_back(wanted);
    else if (same->value != wanted.value)
        reading.object(entry, text_of(wanted) + ": " + text_of(*same) + " est déjà demandé");
}

}  // namespace

void exercise_reading::object(int line, const std::string& reason) {
    problems.push_back({line, recorded_name(reason)});
}

void exercise_reading::object(const toml_entry& entry, const std::string& reason) {
    object(entry.line, entry.key + ": " + reason);
}

void take_line(exercise_reading& reading, const toml_entry& entry, std::string& to) {
    const std::string* const text = text_in(reading, entry);
    if (!text) return;
    if (std::ranges::any_of(*text, is_control))
        return reading.object(entry, "une seule ligne est attendue, sans caractère de contrôle");
    if (is_blank(*text)) return reading.object(entry, "ce texte est vide");
    to = *text;
}

void take_lines(exercise_reading& reading, const toml_entry& entry, std::string& to) {
    const std::string* const text = text_in(reading, entry);
    if (!text) return;
    std::string lines = *text;
    for (std::size_t at = 0; (at = lines.find("\r\n", at)) != std::string::npos;)
        lines.erase(at, 1);
    const auto refused = [](char each) { return is_control(each) && each != '\n' && each != '\t'; };
    if (std::ranges::any_of(lines, refused))
        return reading.object(entry, "caractère de contrôle dans le texte");
    if (is_blank(lines)) return reading.object(entry, "ce texte est vide");
    to = lines.ends_with('\n') ? lines : lines + '\n';
}

void take_whole(exercise_reading& reading, const toml_entry& entry, std::int64_t least,
                std::int64_t most, std::int64_t& to) {
    const auto* number = std::get_if<std::int64_t>(&entry.value.is);
    if (number && *number >= least && *number <= most) {
        to = *number;
        return;
    }
    const bool open = most == std::numeric_limits<std::int64_t>::max();
    const std::string limits = open ? std::to_string(least) + " ou plus"
                                    : "de " + std::to_string(least) + " à " + std::to_string(most);
    reading.object(entry, "un nombre entier " + limits + " est attendu");
}

void take_seconds(exercise_reading& reading, const toml_entry& entry, std::int64_t least_ms,
                  std::int64_t& to) {
    const std::optional<double> seconds = seconds_in(entry);
    const std::int64_t ms = seconds ? milliseconds(*seconds) : -1;
    if (ms >= least_ms) {
        to = ms;
        return;
    }
    const std::string most = std::to_string(longest_s);
    reading.object(entry, least_ms > 0 ? "un nombre de secondes au-dessus de 0, jusqu'à " + most +
                                             ", est attendu"
                                       : "un nombre de secondes de 0 à " + most + " est attendu");
}

void take_conditions(exercise_reading& reading, const toml_entry& entry,
                     std::vector<exercise_condition>& to) {
    const std::size_t before = reading.problems.size();
    for (const std::string& text : texts_in(reading, entry)) {
        const std::optional<exercise_condition> condition = condition_of(reading, entry, text);
        if (condition) add_condition(reading, entry, *condition, to);
    }
    if (to.empty() && reading.problems.size() == before)
        reading.object(entry, "au moins une condition est attendue");
}

void take_faults(exercise_reading& reading, const toml_entry& entry,
                 std::vector<station_fault>& to) {
    for (const std::string& text : texts_in(reading, entry)) {
        std::string reason;
        const std::optional<station_fault> fault = parse_fault(text, reading.model, reason);
        if (!fault)
            reading.object(entry, reason);
        else if (std::ranges::find(to, fault->name, &station_fault::name) != to.end())
            reading.object(entry, text + ": " + fault->name + " a déjà une panne dans la liste");
        else
            to.push_back(*fault);
    }
}
