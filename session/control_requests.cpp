#include "session/control_requests.h"

#include <cmath>
#include <sstream>

#include "ioshare/io_printable.h"
#include "session/desk.h"
#include "session/end_signals.h"
#include "session/session_report.h"
#include "session/whole_number.h"

namespace {

constexpr int any_number = 1000;
constexpr double longest_run_s = 1e6;

const control_answer done = {exit_status::done, ""};
const control_answer session_is_over = {exit_status::session_over, "la session est terminée\n"};

control_answer refused(const std::string& why) { return {exit_status::refused, why + "\n"}; }
control_answer misunderstood(const std::string& why) { return {exit_status::misuse, why + "\n"}; }

std::string fault_texts(const std::vector<station_fault>& faults) {
    std::string text;
    for (const station_fault& each : faults)
        text +=
            (text.empty() ? "" : " ") + each.name + "=" + std::string(fault_kind_word(each.kind));
    return text;
}

}  // namespace

enum class control_word { status, desk, fault, diagnose, pause, resume, speed, step, end, count };

struct control_requests::row {
    control_word key;
    std::string_view word;
    std::size_t least_operands, most_operands;
    answer (control_requests::*carry_out)(const words& operands);
};

// clang-format off
constexpr control_requests::row control_requests::rows[] = {
    {control_word::status,   "status",   0, 0,          &control_requests::status},
    {control_word::desk,     "desk",     1, any_number, &control_requests::desk},
    {control_word::fault,    "fault",    1, 1,          &control_requests::fault},
    {control_word::diagnose, "diagnose", 1, any_number, &control_requests::diagnose},
    {control_word::pause,    "pause",    0, 0,          &control_requests::pause},
    {control_word::resume,   "resume",   0, 0,          &control_requests::resume},
    {control_word::speed,    "speed",    1, 1,          &control_requests::speed},
    {control_word::step,     "step",     1, 1,          &control_requests::step},
    {control_word::end,      "end",      0, 0,          &control_requests::end},
};
// clang-format on

std::optional<control_answer> control_requests::carry_out(const std::string& request, bool over) {
    over_ = over;
    try {
        return find_and_carry_out(request);
    } catch (const failure& why) {
        return control_answer{why.status, request + ": " + why.why + "\n"};
    }
}

control_requests::answer control_requests::find_and_carry_out(const std::string& request) {
    static_assert(one_row_each(rows));
    std::istringstream stream(request);
    words operands{std::istream_iterator<std::string>(stream), {}};
    const std::string word = operands.front();
    operands.erase(operands.begin());
    for (const row& each : rows) {
        if (each.word != word) continue;
        if (operands.size() < each.least_operands || operands.size() > each.most_operands)
            return misunderstood("demande incomprise: " + request);
        if (over_ && each.key != control_word::status) return session_is_over;
        return (this->*each.carry_out)(operands);
    }
    return misunderstood("demande incomprise: " + word);
}

control_requests::answer control_requests::status(const words&) {
    const station_counts counts = run_.counts();
    const auto task = examiner_ ? examiner_->standing() : session_examiner::status();
    const char* const state = over_ ? "fin" : time_.paused() ? "pause" : "marche";
    const std::pair<const char*, std::string> lines[] = {
        {"station", std::string(run_.model().name())},
        {"titre", options_.title},
        {"secondes", seconds_text(run_.ms())},
        {"etat", state},
        {"vitesse", number_text(time_.speed())},
        {"bonnes", std::to_string(counts.good)},
        {"mauvaises", std::to_string(counts.bad)},
        {"incidents", std::to_string(run_.incidents())},
        {"dernier_incident", run_.last_incident()},
        {"pannes", fault_texts(run_.faults())},
        {"exercice", io_printable(task.title)},
        {"but", task.goal},
        {"points", task.points},
    };
    std::string text;
    for (const auto& [name, value] : lines) text += name + ("=" + value) + "\n";
    return control_answer{exit_status::done, text};
}

control_requests::answer control_requests::desk(const words& operands) {
    station_desk wanted = run_.desk();
    for (const std::string& word : operands) {
        const std::size_t equals = word.rfind('=');
        if (equals == std::string::npos) return misunderstood(word + ": NOM=VALEUR est attendu");
        const std::string name = word.substr(0, equals), value = word.substr(equals + 1);
        const desk_row* const button = desk_button_named(name);
        if (!button) return refused("le pupitre n'a ni bouton ni voyant nommé \"" + name + '"');
        if (value != "0" && value != "1") return refused(word + ": 0 ou 1 est attendu");
        wanted.*button->pushed = value == "1";
    }
    if (!fixed_.empty()) return refused(fixed_);
    run_.set_desk(wanted);
    return done;
}

control_requests::answer control_requests::fault(const words& operands) {
    const std::string& text = operands.front();
    if (text.find('=') == std::string::npos)
        return misunderstood(text + ": NOM=PANNE ou NOM= est attendu");
    if (!fixed_.empty()) return refused(fixed_);
    if (examiner_) return refused("un exercice est en cours: ses pannes ne changent pas");
    if (text.back() == '=') {
        const std::string name = text.substr(0, text.size() - 1);
        if (run_.end_fault(name)) return done;
        return refused("la station n'a ni capteur ni actionneur nommé \"" + name + '"');
    }
    std::string reason;
    const std::optional<station_fault> wanted = parse_fault(text, run_.model(), reason);
    if (!wanted || !run_.set_fault(*wanted)) return refused(reason);
    return done;
}

control_requests::answer control_requests::diagnose(const words& operands) {
    for (const std::string& word : operands)
        if (word.find('=') == std::string::npos)
            return misunderstood(word + ": NOM=PANNE est attendu");
    if (!examiner_) return refused("aucun exercice n'est en cours");
    if (!examiner_->asks_for_faults()) return refused("cet exercice ne demande pas de diagnostic");
    std::vector<station_fault> faults;
    for (const std::string& word : operands) {
        std::string reason;
        const std::optional<station_fault> named = parse_fault(word, run_.model(), reason);
        if (!named) return refused(reason);
        faults.push_back(*named);
    }
    examiner_->take_answer(faults);
    return done;
}

control_requests::answer control_requests::pause(const words&) {
    time_.pause();
    return done;
}

control_requests::answer control_requests::resume(const words&) {
    time_.resume(std::chrono::steady_clock::now());
    return done;
}

control_requests::answer control_requests::speed(const words& operands) {
    const double wanted = number_between(operands.front(), least_speed, most_speed);
    time_.set_speed(wanted, std::chrono::steady_clock::now());
    return done;
}

control_requests::answer control_requests::step(const words& operands) {
    const double wanted_s = number_between(operands.front(), step_s, longest_run_s);
    const long long steps = std::llround(wanted_s / step_s);
    if (static_cast<double>(steps * step_ms) / 1000 != wanted_s)
        return misunderstood("step " + operands.front() + ": un multiple de 0.01 est attendu");
    if (!time_.paused()) return refused("la session n'est pas en pause");
    if (time_.steps_left() > 0) return refused("des pas sont déjà en cours");
    time_.run(steps);
    goal_ms_ = run_.ms() + steps * step_ms;
    return std::nullopt;
}

std::optional<control_answer> control_requests::later_answer(bool over) const {
    if (run_.ms() >= goal_ms_) return done;
    if (over) return session_is_over;
    if (time_.steps_left() == 0) return refused("la pause a pris fin");
    return std::nullopt;
}

control_requests::answer control_requests::end(const words&) {
    end_signals::ask();
    return done;
}
