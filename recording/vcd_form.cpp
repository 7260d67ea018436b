#include "recording/vcd_form.h"

#include "recording/recorded_text.h"

namespace {

struct scope_row {
    event_kind kind;
    std::string_view word;
};

constexpr scope_row scopes[] = {{event_kind::input, "capteurs"},
                                {event_kind::output, "commandes"},
                                {event_kind::desk, "pupitre"}};

// Of these no code can be mistaken for a value, a time or a keyword by a reader that skips a
// variable whose kind it does not know.
constexpr std::string_view code_characters = "!%&()*+,-./:;<=>?@[]^_{|}~";

/// A name as one word of a dump: it ends at a blank, and a "$" at its front would be a keyword's.
/// "$end" within it is the declaration's end to readers that look for no word but for these bytes.
std::string word_of(std::string_view name) {
    std::string word = recorded_name(name);
    for (char& each : word)
        if (each == ' ') each = '_';
    for (std::size_t at = 0; (at = word.find("$end", at)) != std::string::npos;) word[at] = '_';
    if (word.empty() || word.front() == '$') word.insert(0, "_");
    return word;
}

/// A text as one word of a dump, its blanks and control bytes as readers of string variables take
/// them: a backslash and three octal digits.
std::string string_value(std::string_view text) {
    std::string word = "s";
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte > ' ' && byte < 127 && each != '\\') {
            word += each;
        } else {
            word += {'\\', static_cast<char>('0' + byte / 64),
                     static_cast<char>('0' + byte / 8 % 8), static_cast<char>('0' + byte % 8)};
        }
    }
    return word;
}

}  // namespace

std::string vcd_form::text_of(std::span<const station_event> events) {
    std::string text;
    if (ms_ < 0) {
        text = head(events);
        for (const station_event& each : events) text += change(each);
        return text + "$end\n";
    }
    for (const station_event& each : events) text += change(each);
    return text;
}

std::string vcd_form::head(std::span<const station_event> first_block) {
    signals_.note(first_block);
    std::string text = "$version quorin $end\n$timescale 1 ms $end\n";
    for (const scope_row& each : scopes) text += scope(first_block, each.kind, each.word);
    return text + "$enddefinitions $end\n" + at(0) + "$dumpvars\n";
}

// Incidents stand beside the desk: a station has both, a link that is watched from outside neither.
std::string vcd_form::scope(std::span<const station_event> first_block, event_kind kind,
                            std::string_view word) {
    std::string lines;
    for (const station_event& each : first_block) {
        if (each.kind != kind || !signals_.has(each)) continue;
        const std::string code = new_code();
        variables_[{kind, recorded_name(each.name)}] = {code};
        lines += "$var wire 1 " + code + " " + word_of(each.name) + " $end\n";
    }
    if (lines.empty()) return lines;
    if (kind == event_kind::desk) {
        const std::string code = new_code();
        variables_[{event_kind::incident, ""}] = {code};
        lines += "$var string 1 " + code + " incident $end\n";
    }
    return "$scope module " + std::string(word) + " $end\n" + lines + "$upscope $end\n";
}

std::string vcd_form::new_code() {
    std::string code;
    for (std::size_t rest = next_code_++;; rest = rest / code_characters.size() - 1) {
        code += code_characters[rest % code_characters.size()];
        if (rest < code_characters.size()) return code;
    }
}

std::string vcd_form::at(std::int64_t ms) {
    if (ms == ms_) return {};
    ms_ = ms;
    return "#" + std::to_string(ms) + "\n";
}

std::string vcd_form::change(const station_event& event) {
    if (ends_a_run(event)) return at(event.ms);
    const bool incident = event.kind == event_kind::incident;
    const auto found = variables_.find({event.kind, incident ? "" : recorded_name(event.name)});
    if (found == variables_.end() || !signals_.has(event)) return {};
    variable& wire = found->second;
    if (incident) return at(event.ms) + string_value(event.text) + " " + wire.code + "\n";
    const char bit = event.value == 1 ? '1' : '0';
    if (std::exchange(wire.bit, bit) == bit) return {};
    return at(event.ms) + bit + wire.code + "\n";
}
