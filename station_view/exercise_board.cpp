#include "station_view/exercise_board.h"

#include <algorithm>
#include <sstream>

#include "lesson/lesson_numbers.h"
#include "recording/recorded_text.h"
#include "station_view/exercise_words.h"
#include "station_view/fault_labels.h"

namespace {

using word = exercise_word;
using sign = board_sign;

/// A time that is left, in whole seconds: it is 0 when there is none.
std::int64_t seconds_left(std::int64_t until_ms, std::int64_t now_ms) {
    return std::max<std::int64_t>(until_ms - now_ms + 999, 0) / 1000;
}

bool continues(const std::string& line) {
    return !line.empty() && std::string(" \t-*0123456789").find(line.front()) == std::string::npos;
}

/// A fault written "b2s=stuck1" in full; as it is where it is not understood.
std::string fault_in_full(const std::string& written, language in) {
    const std::size_t equals = written.rfind('=');
    if (equals == std::string::npos) return written;
    const auto kind = fault_kind_called(written.substr(equals + 1));
    return kind ? fault_sentence({written.substr(0, equals), *kind}, in) : written;
}

class board_writer {
public:
    board_writer(const exercise& task, const exercise_standing& standing, std::string answer,
                 language in)
        : task_(task), standing_(standing), answer_(std::move(answer)), in_(in) {}

    exercise_board board() {
        write_head();
        write_goals();
        write_bans();
        write_balances();
        write_diagnosis();
        write_hidden_faults();
        return std::move(board_);
    }

private:
    std::string text(word which) const { return text_of(which, in_); }
    static std::string seconds(std::int64_t ms) { return short_seconds(ms) + " s"; }
    std::string points(std::int64_t number) const { return points_text(number, in_); }
    bool over() const { return standing_.over_ms.has_value(); }
    void add(sign which, const std::string& line, const std::string& note = "") {
        board_.lines.push_back({which, recorded_name(line), note});
    }
    void add_heading(word which) { add(sign::heading, text(which)); }
    std::string left(std::int64_t until_ms) const {
        return text(word::time_left) + std::to_string(seconds_left(until_ms, standing_.ms)) + " s";
    }

    void write_head() {
        board_.title = recorded_name(task_.title.in(in_));
        board_.points = std::to_string(standing_.points) + " / " + std::to_string(standing_.total) +
                        text(word::points);
        if (over()) {
            board_.result = standing_.passed ? board_result::passed : board_result::failed;
            board_.time = text(standing_.passed ? word::passed : word::failed);
        } else if (task_.station.duration_ms) {
            board_.time = left(*task_.station.duration_ms);
        }
    }

    void write_goals() {
        if (!task_.goals.empty()) add_heading(word::goals);
        for (std::size_t i = 0; i < task_.goals.size(); ++i) {
            const exercise_goal& goal = task_.goals[i];
            std::string line = std::to_string(i + 1) + ". " + goal.text.in(in_);
            if (goal.hold_ms > 0) line += " (" + text(word::hold) + seconds(goal.hold_ms) + ")";
            add(sign_of(standing_.goals[i]), line, note_of(goal, standing_.goals[i]));
        }
    }

    bool overdue() const {
        return standing_.goal_limit_ms && standing_.ms > *standing_.goal_limit_ms;
    }

    sign sign_of(const goal_standing& goal) const {
        if (goal.state == goal_state::reached) return sign::reached;
        if (goal.state == goal_state::too_late) return sign::too_late;
        if (over()) return sign::missed;
        if (goal.state == goal_state::open) return sign::to_come;
        return overdue() ? sign::overdue : sign::current;
    }

    std::string note_of(const exercise_goal& goal, const goal_standing& standing) const {
        switch (sign_of(standing)) {
            case sign::reached:
                return seconds(*standing.reached_ms);
            case sign::too_late:
                return text(word::too_late) + ", " + seconds(*standing.reached_ms);
            case sign::missed:
                return text(word::not_reached);
            case sign::overdue:
                return text(word::too_late);
            case sign::current:
                if (standing_.goal_limit_ms) return left(*standing_.goal_limit_ms);
                [[fallthrough]];
            default:
                return points(goal.points);
        }
    }

    void write_bans() {
        if (!task_.bans.empty()) add_heading(word::bans);
        for (std::size_t i = 0; i < task_.bans.size(); ++i) {
            const exercise_ban& ban = task_.bans[i];
            std::string line = ban.text.in(in_);
            if (ban.penalty > 0) line += " (-" + points(ban.penalty) + ")";
            const auto& first_ms = standing_.bans[i];
            if (first_ms)
                add(sign::happened, line, text(word::happened) + seconds(*first_ms));
            else
                add(sign::not_happened, line, over() ? text(word::not_failed) : "");
        }
    }

    void write_balances() {
        if (!task_.balances.empty()) add_heading(word::balances);
        for (const exercise_balance& each : task_.balances) {
            const bool good = holds(each, standing_);
            const sign now = over() ? (good ? sign::reached : sign::missed)
                                    : (good ? sign::kept : sign::to_come);
            std::string note =
                std::to_string(standing_.counts[static_cast<std::size_t>(each.count)]);
            if (each.at_least) note += " / " + std::to_string(*each.at_least);
            add(now, each.text.in(in_), note);
        }
    }

    void write_diagnosis() {
        if (!task_.diagnosis) return;
        add_heading(word::diagnosis);
        const bool right = over() && is_right(*task_.diagnosis, standing_);
        const sign now = over() ? (right ? sign::reached : sign::missed)
                                : (answer_.empty() ? sign::to_come : sign::kept);
        const std::string worth = points(task_.diagnosis->points);
        if (answer_.empty())
            return add(now, text(over() ? word::no_answer : word::no_answer_yet), worth);
        std::istringstream faults(answer_);
        std::string note = worth;
        for (std::string each; faults >> each; note.clear())
            add(now, fault_in_full(each, in_), note);
    }

    void write_hidden_faults() {
        if (!over() || task_.station.hidden_faults.empty()) return;
        add_heading(word::hidden_faults);
        for (const station_fault& each : task_.station.hidden_faults)
            add(sign::text, fault_sentence(each, in_));
    }

    const exercise& task_;
    const exercise_standing& standing_;
    const std::string answer_;
    const language in_;
    exercise_board board_;
};

// French has a blank before these, at which no line is broken.
bool binds(std::string_view from_blank) {
    return from_blank.size() > 1 &&
           std::string_view(":;!?").find(from_blank[1]) != std::string_view::npos;
}

/// How many bytes of `text` fit: up to a blank where there is one, else whole characters, one at
/// least.
std::size_t bytes_that_fit(std::string_view text, int room,
                           const std::function<int(std::string_view)>& width) {
    constexpr std::size_t most_bytes = 4;
    const std::size_t most = static_cast<std::size_t>(room) * most_bytes;
    const std::string_view head = text.substr(0, most + 1);
    const auto fits = [&](std::size_t bytes) {
        return bytes <= most && width(head.substr(0, bytes)) <= room;
    };
    std::size_t whole_words = 0;
    for (std::size_t at = 0; at < head.size(); ++at) {
        at = std::min(head.find(' ', at), head.size());
        if (!fits(at)) break;
        if (!binds(head.substr(at))) whole_words = at;
    }
    if (whole_words > 0 || head.empty()) return whole_words;
    std::size_t at = 0;
    while (at < head.size()) {
        const std::size_t next =
            at + std::max<std::size_t>(utf8_length(text.substr(at, most_bytes)), 1);
        if (at > 0 && !fits(next)) break;
        at = next;
    }
    return at;
}

}  // namespace

exercise_board board_of(const exercise& task, const exercise_standing& standing,
                        const std::string& answer, language in) {
    return board_writer(task, standing, answer, in).board();
}

// The file's own ends of lines are those of its editor: lines that go on are one paragraph.
std::vector<board_line> task_of_board(const exercise& task, language in) {
    std::vector<board_line> found;
    std::istringstream lines(task.task.in(in));
    std::string before;
    for (std::string line; std::getline(lines, line); before = line) {
        if (!before.empty() && continues(line))
            found.back().text += " " + line;
        else
            found.push_back({sign::text, line});
    }
    for (board_line& each : found) each.text = recorded_name(each.text);
    if (!task.station.faults.empty())
        found.push_back({sign::heading, text_of(word::told_faults, in)});
    for (const station_fault& each : task.station.faults)
        found.push_back({sign::text, recorded_name(fault_sentence(each, in))});
    return found;
}

int current_line(const exercise_board& board) {
    for (std::size_t i = 0; i < board.lines.size(); ++i)
        if (board.lines[i].sign == board_sign::current ||
            board.lines[i].sign == board_sign::overdue)
            return static_cast<int>(i);
    return -1;
}

std::vector<std::string> wrapped(std::string_view text, int room,
                                 const std::function<int(std::string_view)>& width) {
    std::vector<std::string> lines;
    do {
        const std::size_t bytes = bytes_that_fit(text, room, width);
        lines.emplace_back(text.substr(0, bytes));
        text.remove_prefix(bytes);
        if (text.starts_with(' ')) text.remove_prefix(1);
    } while (!text.empty());
    return lines;
}
