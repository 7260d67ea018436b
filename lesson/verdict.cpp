#include "lesson/verdict.h"

#include <algorithm>

#include "lesson/lesson_numbers.h"
#include "lesson/verdict_words.h"
#include "recording/recorded_text.h"
#include "session/session_report.h"

namespace {

using word = verdict_word;
using sentences = std::vector<verdict_sentence>;

/// What the sentences are about, and the language in which they speak.
struct verdict {
    const exercise& task;
    const exercise_standing& standing;
    language in;

    std::string text(const lesson_text& of) const { return recorded_name(of.in(in)); }
    std::string end() const { return seconds_text(standing.over_ms.value_or(standing.ms)); }
    std::string say(verdict_word what, std::initializer_list<std::string> values) const {
        return said(what, in, values);
    }
    std::int64_t goal_before_ms(std::size_t goal) const {
        return goal == 0 ? 0 : standing.goals[goal - 1].reached_ms.value_or(0);
    }
};

std::string number_of(std::size_t place) { return std::to_string(place + 1); }

std::string missing_conditions(const verdict& of, std::size_t goal) {
    const auto& conditions = of.task.goals[goal].conditions;
    const auto& each = of.standing.goals[goal].conditions.each;
    std::string text;
    for (std::size_t i = 0; i < each.size(); ++i) {
        if (each[i].holds) continue;
        text += (text.empty() ? "" : ", ") +
                of.say(word::missing_since,
                       {recorded_name(text_of(conditions[i])), seconds_text(each[i].since_ms)});
    }
    return text;
}

std::string unreached_goal(const verdict& of, std::size_t goal) {
    const std::string number = number_of(goal), text = of.text(of.task.goals[goal].text);
    const held_since& all = of.standing.goals[goal].conditions.all;
    if (!all.holds)
        return of.say(word::missing, {number, text, of.end(), missing_conditions(of, goal)});
    if (of.standing.next_goal != goal + 1)
        return of.say(word::not_its_turn,
                      {number, text, of.end(), std::to_string(of.standing.next_goal)});
    return of.say(
        word::held_too_short,
        {number, text, of.end(), seconds_text(std::max(all.since_ms, of.goal_before_ms(goal))),
         seconds_text(of.task.goals[goal].hold_ms)});
}

verdict_sentence goal_sentence(const verdict& of, std::size_t place) {
    const exercise_goal& goal = of.task.goals[place];
    const goal_standing& standing = of.standing.goals[place];
    if (!standing.reached_ms) return {unreached_goal(of, place), true};
    const std::string number = number_of(place), text = of.text(goal.text),
                      at = seconds_text(*standing.reached_ms);
    if (standing.state == goal_state::reached)
        return {of.say(word::reached, {number, text, at, points_text(goal.points, of.in)})};
    const std::int64_t limit_ms = of.goal_before_ms(place) + goal.within_ms.value_or(0);
    return {of.say(word::too_late, {number, text, at, seconds_text(limit_ms)}), true};
}

verdict_sentence ban_sentence(const verdict& of, std::size_t place) {
    const exercise_ban& ban = of.task.bans[place];
    const std::string number = number_of(place), text = of.text(ban.text);
    const auto& first_ms = of.standing.bans[place];
    if (!first_ms) return {of.say(word::not_banned, {number, text})};
    const std::string at = seconds_text(*first_ms);
    if (ban.penalty == 0) return {of.say(word::banned, {number, text, at}), true};
    return {of.say(word::banned_for, {number, text, at, points_text(ban.penalty, of.in)}), true};
}

std::string limits_of(const verdict& of, const exercise_balance& balance) {
    std::string text;
    if (balance.at_least) text = of.say(word::at_least, {std::to_string(*balance.at_least)});
    if (!balance.at_most) return text;
    if (!text.empty()) text += of.say(word::and_then, {});
    return text + of.say(word::at_most, {std::to_string(*balance.at_most)});
}

verdict_sentence balance_sentence(const verdict& of, std::size_t place) {
    const exercise_balance& balance = of.task.balances[place];
    const std::string number = number_of(place), text = of.text(balance.text);
    const std::string count =
        std::string(session_count_word(balance.count, of.in)) +
        ("=" + std::to_string(of.standing.counts[static_cast<std::size_t>(balance.count)]));
    if (holds(balance, of.standing))
        return {
            of.say(word::balance_kept, {number, text, count, points_text(balance.points, of.in)})};
    return {of.say(word::balance_failed, {number, text, of.end(), count, limits_of(of, balance)}),
            true};
}

verdict_sentence diagnosis_sentence(const verdict& of, const exercise_diagnosis& diagnosis) {
    const std::string right = recorded_name(answer_text(diagnosis.faults));
    if (!of.standing.answered_ms) return {of.say(word::no_answer, {of.end(), right}), true};
    const std::string answer = recorded_name(of.standing.answer),
                      at = seconds_text(*of.standing.answered_ms);
    if (!is_right(diagnosis, of.standing))
        return {of.say(word::wrong_answer, {answer, at, right}), true};
    return {of.say(word::right_answer, {answer, at, points_text(diagnosis.points, of.in)})};
}

void add_hints(const verdict& of, sentences& all) {
    for (std::size_t i = 0; i < of.task.hints.size(); ++i)
        if (const auto& first_ms = of.standing.hints[i])
            all.push_back(
                {of.say(word::hint, {seconds_text(*first_ms), of.text(of.task.hints[i].text)})});
}

void add_counts(const verdict& of, sentences& all) {
    const auto& count = of.standing.counts;
    all.push_back({of.say(word::counts, {std::to_string(count[0]), std::to_string(count[1]),
                                         std::to_string(count[2])})});
    for (std::size_t i = 0; i < of.task.balances.size(); ++i)
        all.push_back(balance_sentence(of, i));
}

void add_faults(const verdict& of, sentences& all) {
    const std::vector<station_fault>& hidden = of.task.station.hidden_faults;
    if (!hidden.empty())
        all.push_back({of.say(word::hidden_faults, {recorded_name(answer_text(hidden))})});
    if (of.task.diagnosis) all.push_back(diagnosis_sentence(of, *of.task.diagnosis));
}

void add_end(const verdict& of, sentences& all) {
    all.push_back({of.say(
        word::points, {std::to_string(of.standing.points), std::to_string(of.standing.total)})});
    const bool passed = of.standing.passed;
    all.push_back({of.say(passed ? word::passed : word::failed, {of.end()}), !passed});
}

/// How many bytes of the text stand in a line of so many characters: up to a blank where there is
/// one, else up to the last character that fits.
std::size_t bytes_of_line(const std::string& text, std::size_t width) {
    std::size_t at = 0, blank = 0;
    for (std::size_t characters = 0; at < text.size(); ++characters) {
        if (text[at] == ' ') blank = at;
        if (characters == width) return blank > 0 ? blank : at;
        at += std::max<std::size_t>(utf8_length(std::string_view(text).substr(at)), 1);
    }
    return text.size();
}

}  // namespace

std::vector<verdict_sentence> verdict_sentences(const exercise& task,
                                                const exercise_standing& standing, language in) {
    const verdict of{task, standing, in};
    sentences all = {{of.say(word::task, {of.text(task.title)})}};
    for (std::size_t i = 0; i < task.goals.size(); ++i) all.push_back(goal_sentence(of, i));
    for (std::size_t i = 0; i < task.bans.size(); ++i) all.push_back(ban_sentence(of, i));
    add_hints(of, all);
    add_counts(of, all);
    add_faults(of, all);
    add_end(of, all);
    return all;
}

std::string markup_cell(std::string text) {
    std::ranges::replace(text, '#', '*');
    return text;
}

std::vector<std::string> markup_lines(const std::string& text, std::size_t width) {
    std::vector<std::string> lines;
    for (std::string rest = markup_cell(text); !rest.empty();) {
        const std::size_t bytes = bytes_of_line(rest, width);
        lines.push_back(" " + rest.substr(0, bytes));
        rest.erase(0, rest[bytes] == ' ' ? bytes + 1 : bytes);
    }
    return lines;
}

std::vector<std::string> verdict_lines(const exercise& task, const exercise_standing& standing,
                                       language in, const std::string& heading) {
    constexpr std::size_t width = 100;
    std::vector<std::string> lines = {"#C T102 T ", "#T"};
    const auto add = [&](const std::string& text) {
        const std::vector<std::string> some = markup_lines(text, width);
        lines.insert(lines.end(), some.begin(), some.end());
    };
    add(heading);
    const std::vector<verdict_sentence> all = verdict_sentences(task, standing, in);
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (i == 1 || i + 2 == all.size()) lines.emplace_back("#T");
        add(all[i].text);
    }
    lines.emplace_back("#T");
    return lines;
}
