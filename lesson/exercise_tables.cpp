#include "lesson/exercise_tables.h"

#include <limits>

#include "lesson/exercise_keys.h"
#include "lesson/hidden_part.h"

namespace {

constexpr std::int64_t any_number = std::numeric_limits<std::int64_t>::max();

// What several tables have is taken by a template: each has its own fields of these names.

template <class Table>
void take_text(exercise_reading& in, const toml_entry& entry, Table& to) {
    take_line(in, entry, to.text.french);
}

template <class Table>
void take_english_text(exercise_reading& in, const toml_entry& entry, Table& to) {
    take_line(in, entry, to.text.english);
}

template <class Table>
void take_when(exercise_reading& in, const toml_entry& entry, Table& to) {
    take_conditions(in, entry, to.conditions);
}

template <class Table>
void take_hold(exercise_reading& in, const toml_entry& entry, Table& to) {
    take_seconds(in, entry, 0, to.hold_ms);
}

template <class Table>
void take_points(exercise_reading& in, const toml_entry& entry, Table& to) {
    take_whole(in, entry, 0, most_exercise_points, to.points);
}

void take_seed(exercise_reading& in, const toml_entry& entry, exercise_station& to) {
    std::int64_t seed = 0;
    take_whole(in, entry, 0, any_number, seed);
    to.seed = static_cast<std::uint64_t>(seed);
}

void take_supplies(exercise_reading& in, const toml_entry& entry, int& to) {
    std::int64_t number = to;
    take_whole(in, entry, 0, most_exercise_supplies, number);
    to = static_cast<int>(number);
}

void take_count(exercise_reading& in, const toml_entry& entry, exercise_balance& to) {
    const auto* const text = std::get_if<std::string>(&entry.value.is);
    const auto count = text ? session_count_called(*text) : std::nullopt;
    if (count)
        to.count = *count;
    else
        in.object(entry, "\"bonnes\", \"mauvaises\" ou \"incidents\" est attendu");
}

void take_limit(exercise_reading& in, const toml_entry& entry, std::optional<std::int64_t>& to) {
    take_whole(in, entry, 0, any_number, to.emplace(0));
}

void take_named_faults(exercise_reading& in, const toml_entry& entry, exercise_diagnosis& to) {
    const std::size_t before = in.problems.size();
    take_faults(in, entry, to.faults);
    if (to.faults.empty() && in.problems.size() == before)
        in.object(entry, "au moins une panne est attendue");
}

void take_format(exercise_reading& in, const toml_entry& entry, exercise&) {
    const auto* const number = std::get_if<std::int64_t>(&entry.value.is);
    if (!number || *number != 1) in.object(entry, "1 est attendu");
}

// clang-format off
constexpr key_row<exercise_station> hidden_faults_key =
    {"pannes_cachees", false, [](auto& in, auto& entry, auto& to) { take_faults(in, entry, to.hidden_faults); }};

constexpr key_row<exercise_station> station_keys[] = {
    {"graine",         false, take_seed},
    {"bases",          false, [](auto& in, auto& entry, auto& to) { take_supplies(in, entry, to.bases); }},
    {"pieces",         false, [](auto& in, auto& entry, auto& to) { take_supplies(in, entry, to.parts); }},
    {"duree_s",        false, [](auto& in, auto& entry, auto& to) { take_seconds(in, entry, 1, to.duration_ms.emplace(0)); }},
    {"pannes",         false, [](auto& in, auto& entry, auto& to) { take_faults(in, entry, to.faults); }},
    hidden_faults_key,
};

constexpr key_row<exercise_goal> goal_keys[] = {
    {"texte",    true,  take_text},
    {"texte_en", false, take_english_text},
    {"quand",    true,  take_when},
    {"tenir_s",  false, take_hold},
    {"avant_s",  false, [](auto& in, auto& entry, auto& to) { take_seconds(in, entry, 0, to.within_ms.emplace(0)); }},
    {"points",   false, take_points},
};

constexpr key_row<exercise_ban> ban_keys[] = {
    {"texte",    true,  take_text},
    {"texte_en", false, take_english_text},
    {"quand",    true,  take_when},
    {"moins",    false, [](auto& in, auto& entry, auto& to) { take_whole(in, entry, 0, most_exercise_points, to.penalty); }},
};

constexpr key_row<exercise_hint> hint_keys[] = {
    {"texte",    true,  take_text},
    {"texte_en", false, take_english_text},
    {"quand",    true,  take_when},
    {"tenir_s",  false, take_hold},
};

constexpr key_row<exercise_balance> balance_keys[] = {
    {"texte",    true,  take_text},
    {"texte_en", false, take_english_text},
    {"compte",   true,  take_count},
    {"au_moins", false, [](auto& in, auto& entry, auto& to) { take_limit(in, entry, to.at_least); }},
    {"au_plus",  false, [](auto& in, auto& entry, auto& to) { take_limit(in, entry, to.at_most); }},
    {"points",   false, take_points},
};

constexpr key_row<exercise_diagnosis> diagnosis_keys[] = {
    {"pannes", true,  take_named_faults},
    {"points", false, take_points},
};
// clang-format on

void check_limits(exercise_reading& in, const toml_value& table, const exercise_balance& read) {
    if (!read.at_least && !read.at_most)
        in.object(table.line, "il manque au_moins ou au_plus");
    else if (read.at_least && read.at_most && *read.at_least > *read.at_most)
        in.object(*entry_named(std::get<toml_table>(table.is), "au_moins"), "dépasse au_plus");
}

void take_balances(exercise_reading& in, const toml_entry& entry, exercise& to) {
    take_tables(in, entry, balance_keys, to.balances);
    for (std::size_t i = 0; i < to.balances.size(); ++i)
        check_limits(in, std::get<toml_list>(entry.value.is)[i], to.balances[i]);
}

void take_diagnosis(exercise_reading& in, const toml_entry& entry, exercise& to) {
    take_table(in, entry, diagnosis_keys, to.diagnosis.emplace());
}

void take_cache(exercise_reading& in, const toml_entry& entry, exercise& to);

// clang-format off
constexpr key_row<exercise> file_keys[] = {
    {"format",     true,  take_format},
    {"titre",      true,  [](auto& in, auto& entry, auto& to) { take_line(in, entry, to.title.french); }},
    {"titre_en",   false, [](auto& in, auto& entry, auto& to) { take_line(in, entry, to.title.english); }},
    {"enonce",     true,  [](auto& in, auto& entry, auto& to) { take_lines(in, entry, to.task.french); }},
    {"enonce_en",  false, [](auto& in, auto& entry, auto& to) { take_lines(in, entry, to.task.english); }},
    {"station",    false, [](auto& in, auto& entry, auto& to) { take_table(in, entry, station_keys, to.station); }},
    {"but",        false, [](auto& in, auto& entry, auto& to) { take_tables(in, entry, goal_keys, to.goals); }},
    {"jamais",     false, [](auto& in, auto& entry, auto& to) { take_tables(in, entry, ban_keys, to.bans); }},
    {"indice",     false, [](auto& in, auto& entry, auto& to) { take_tables(in, entry, hint_keys, to.hints); }},
    {"bilan",      false, take_balances},
    {"diagnostic", false, take_diagnosis},
    // The last one: it adds to what the others gave.
    {"cache",      false, take_cache},
};

/// What `cache` holds, as a file of its own.
constexpr key_row<exercise_station> hidden_station_keys[] = {hidden_faults_key};
constexpr key_row<exercise> hidden_keys[] = {
    {"station",    false, [](auto& in, auto& entry, auto& to) { take_table(in, entry, hidden_station_keys, to.station); }},
    {"diagnostic", false, take_diagnosis},
};
// clang-format on

void take_cache(exercise_reading& in, const toml_entry& entry, exercise& to) {
    if (!to.station.hidden_faults.empty() || to.diagnosis)
        return in.object(entry, "elle tient lieu de pannes_cachees et de diagnostic");
    const auto* const digits = std::get_if<std::string>(&entry.value.is);
    const std::optional<std::string> text = digits ? shown_part(*digits) : std::nullopt;
    const auto hidden = text ? read_toml(*text) : exercise_problem{};
    const auto* const table = std::get_if<toml_table>(&hidden);
    if (!table) return in.object(entry, "abîmée: quorin-lesson hide l'a écrite autrement");
    exercise_reading within(in.model);
    take_table(within, *table, 1, hidden_keys, to);
    if (!within.problems.empty()) in.object(entry, "ce qu'elle cache ne va pas à cette station");
}

/// Of the table of that name, if it is one.
const toml_entry* entry_within(const toml_table& file, std::string_view table,
                               std::string_view key) {
    const toml_entry* const holder = entry_named(file, table);
    const auto* const entries = holder ? std::get_if<toml_table>(&holder->value.is) : nullptr;
    return entries ? entry_named(*entries, key) : nullptr;
}

void check_hidden_faults(exercise_reading& in, const toml_table& file, const exercise& read) {
    const toml_entry* const here = entry_within(file, "station", "pannes_cachees");
    const toml_entry* const entry = here ? here : entry_named(file, "cache");
    for (const station_fault& each : read.station.hidden_faults)
        if (std::ranges::find(read.station.faults, each.name, &station_fault::name) !=
            read.station.faults.end())
            in.object(*entry, (here ? each.name : "une panne cachée") + " est aussi dans pannes");
}

/// There must be something to do, and an end.
void check_purpose(exercise_reading& in, const toml_table& file, const exercise& read) {
    const toml_entry* const station = entry_named(file, "station");
    const bool ends = !read.goals.empty() || read.diagnosis ||
                      entry_within(file, "station", "duree_s") != nullptr;
    if (read.goals.empty() && read.balances.empty() && !read.diagnosis)
        in.object(1, "il manque un but, un bilan ou un diagnostic");
    else if (!ends)
        in.object(station ? station->value.line : 1,
                  "il manque duree_s: sans but ni diagnostic l'exercice ne finit pas de lui-même");
}

}  // namespace

void take_exercise(exercise_reading& reading, const toml_table& file, exercise& to) {
    take_table(reading, file, 1, file_keys, to);
    check_hidden_faults(reading, file, to);
    check_purpose(reading, file, to);
}
