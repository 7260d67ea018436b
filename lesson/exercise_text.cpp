#include "lesson/exercise_text.h"

#include "lesson/hidden_part.h"
#include "lesson/lesson_numbers.h"

namespace {

/// What stands for a byte within quotes.
std::string escaped(char byte) {
    constexpr char digits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    if (byte == '"' || byte == '\\') return {'\\', byte};
    if (value >= 32 && value != 127) return {byte};
    return std::string("\\u00") + digits[value / 16] + digits[value % 16];
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char each : text) result += escaped(each);
    return result + '"';
}

/// Its lines stay lines.
std::string quoted_lines(const std::string& text) {
    std::string result = "\"\"\"\n";
    for (const char each : text)
        result += each == '\n' || each == '\t' ? std::string(1, each) : escaped(each);
    return result + "\"\"\"";
}

template <class List>
std::string list_of(const List& things) {
    std::string result;
    for (const auto& each : things) result += (result.empty() ? "" : ", ") + quoted(text_of(each));
    return "[" + result + "]";
}

class file_writer {
public:
    void add(const std::string& key, const std::string& value) {
        text_ += key + " = " + value + "\n";
    }
    void add(const std::string& key, std::int64_t value) { add(key, std::to_string(value)); }
    /// Only where it is not what the key's absence means.
    template <class Value, class Usual>
    void add_unless(const Usual& usual, const std::string& key, const Value& value) {
        if (value != static_cast<Value>(usual)) add(key, value);
    }
    void add_seconds(const std::string& key, std::int64_t ms) { add(key, short_seconds(ms)); }

    template <class List>
    void add_list(const std::string& key, const List& things) {
        if (!things.empty()) add(key, list_of(things));
    }
    void add_texts(const lesson_text& text) {
        add("texte", quoted(text.french));
        if (!text.english.empty()) add("texte_en", quoted(text.english));
    }
    void begin(const std::string& heading) { text_ += "\n" + heading + "\n"; }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// What is hidden, as a file of its own; empty when nothing is.
std::string hidden_tables(const exercise& what) {
    file_writer file;
    if (!what.station.hidden_faults.empty()) {
        file.begin("[station]");
        file.add_list("pannes_cachees", what.station.hidden_faults);
    }
    if (what.diagnosis) {
        file.begin("[diagnostic]");
        file.add_list("pannes", what.diagnosis->faults);
        file.add_unless(1, "points", what.diagnosis->points);
    }
    return file.text();
}

void add_head(file_writer& file, const exercise& what) {
    file.add("format", 1);
    file.add("titre", quoted(what.title.french));
    if (!what.title.english.empty()) file.add("titre_en", quoted(what.title.english));
    file.add("enonce", quoted_lines(what.task.french));
    if (!what.task.english.empty()) file.add("enonce_en", quoted_lines(what.task.english));
    const std::string hidden = hidden_tables(what);
    if (!hidden.empty()) file.add("cache", quoted(hidden_part(hidden)));
}

void add_station(file_writer& file, const exercise_station& station) {
    file.begin("[station]");
    file.add("graine", std::to_string(station.seed));
    file.add("bases", station.bases);
    file.add("pieces", station.parts);
    if (station.duration_ms) file.add_seconds("duree_s", *station.duration_ms);
    file.add_list("pannes", station.faults);
}

void add_goal(file_writer& file, const exercise_goal& goal) {
    file.begin("[[but]]");
    file.add_texts(goal.text);
    file.add_list("quand", goal.conditions);
    if (goal.hold_ms > 0) file.add_seconds("tenir_s", goal.hold_ms);
    if (goal.within_ms) file.add_seconds("avant_s", *goal.within_ms);
    file.add_unless(1, "points", goal.points);
}

void add_ban(file_writer& file, const exercise_ban& ban) {
    file.begin("[[jamais]]");
    file.add_texts(ban.text);
    file.add_list("quand", ban.conditions);
    file.add_unless(0, "moins", ban.penalty);
}

void add_hint(file_writer& file, const exercise_hint& hint) {
    file.begin("[[indice]]");
    file.add_texts(hint.text);
    file.add_list("quand", hint.conditions);
    if (hint.hold_ms > 0) file.add_seconds("tenir_s", hint.hold_ms);
}

void add_balance(file_writer& file, const exercise_balance& balance) {
    file.begin("[[bilan]]");
    file.add_texts(balance.text);
    file.add("compte", quoted(std::string(session_count_word(balance.count))));
    if (balance.at_least) file.add("au_moins", *balance.at_least);
    if (balance.at_most) file.add("au_plus", *balance.at_most);
    file.add_unless(1, "points", balance.points);
}

}  // namespace

std::string hidden_exercise_text(const exercise& what) {
    file_writer file;
    add_head(file, what);
    add_station(file, what.station);
    for (const exercise_goal& each : what.goals) add_goal(file, each);
    for (const exercise_ban& each : what.bans) add_ban(file, each);
    for (const exercise_hint& each : what.hints) add_hint(file, each);
    for (const exercise_balance& each : what.balances) add_balance(file, each);
    return file.text();
}
