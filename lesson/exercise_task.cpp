#include "lesson/exercise_task.h"

#include "lesson/lesson_numbers.h"
#include "session/keyed_rows.h"

namespace {

enum class word { goals, bans, balances, diagnosis, faults, duration, total, hold, within, count };

struct word_row {
    word key;
    bilingual text;
};

// clang-format off
constexpr word_row words[] = {
    {word::goals,     {"Buts, dans cet ordre :", "Goals, in this order:"}},
    {word::bans,      {"À ne jamais faire :", "Never:"}},
    {word::balances,  {"À la fin :", "In the end:"}},
    {word::diagnosis, {"Diagnostic : trouver ce qui est en panne, et de quelle panne", "Diagnosis: find what is faulty, and with which fault"}},
    {word::faults,    {"Pannes : ", "Faults: "}},
    {word::duration,  {"Durée : ", "Duration: "}},
    {word::total,     {"Total : ", "Total: "}},
    {word::hold,      {"à tenir ", "to be held for "}},
    {word::within,    {"en ", "within "}},
};
// clang-format on
static_assert(one_row_each(words));

class task_writer {
public:
    task_writer(const exercise& what, language in) : what_(what), in_(in) {}

    std::vector<std::string> lines() {
        add(what_.title.in(in_));
        add("");
        add_task();
        add_goals();
        add_bans();
        add_balances();
        add_rest();
        return lines_;
    }

private:
    std::string text(word key) const { return row_of(words, key).text.in(in_); }
    std::string points(std::int64_t number) const { return points_text(number, in_); }
    void add(const std::string& line) { lines_.push_back(line); }

    void begin_part(word heading) {
        add("");
        add(text(heading));
    }

    void add_task() {
        const std::string& task = what_.task.in(in_);
        for (std::size_t at = 0; at < task.size();) {
            const std::size_t end = std::min(task.find('\n', at), task.size());
            add(task.substr(at, end - at));
            at = end + 1;
        }
    }

    void add_goals() {
        if (!what_.goals.empty()) begin_part(word::goals);
        int number = 0;
        for (const exercise_goal& each : what_.goals) {
            std::string terms;
            if (each.hold_ms > 0) terms += text(word::hold) + short_seconds(each.hold_ms) + " s, ";
            if (each.within_ms)
                terms += text(word::within) + short_seconds(*each.within_ms) + " s, ";
            add("  " + std::to_string(++number) + ". " + each.text.in(in_) + " (" + terms +
                points(each.points) + ")");
        }
    }

    void add_bans() {
        if (!what_.bans.empty()) begin_part(word::bans);
        for (const exercise_ban& each : what_.bans)
            add("  - " + each.text.in(in_) +
                (each.penalty > 0 ? " (-" + points(each.penalty) + ")" : ""));
    }

    void add_balances() {
        if (!what_.balances.empty()) begin_part(word::balances);
        for (const exercise_balance& each : what_.balances)
            add("  - " + each.text.in(in_) + " (" + points(each.points) + ")");
    }

    void add_rest() {
        add("");
        if (what_.diagnosis)
            add(text(word::diagnosis) + " (" + points(what_.diagnosis->points) + ")");
        std::string faults;
        for (const station_fault& each : what_.station.faults)
            faults += (faults.empty() ? "" : ", ") + text_of(each);
        if (!faults.empty()) add(text(word::faults) + faults);
        if (what_.station.duration_ms)
            add(text(word::duration) + short_seconds(*what_.station.duration_ms) + " s");
        add(text(word::total) + points(total_points(what_)));
    }

    const exercise& what_;
    language in_;
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> task_lines(const exercise& what, language in) {
    return task_writer(what, in).lines();
}
