#include "lesson/toml_refusals.h"

#include <algorithm>

#include "recording/recorded_text.h"

namespace {

constexpr int most_points = 1000;

bool is_ascii(char each) { return static_cast<unsigned char>(each) < 0x80; }

/// Whether a control byte stands at the front that no TOML text has anywhere.
bool is_refused_control(std::string_view bytes) {
    const char each = bytes[0];
    if (each == '\r') return !bytes.starts_with("\r\n");
    const bool control = is_ascii(each) && (each < 32 || each == 127);
    return control && each != '\t' && each != '\n';
}

/// Looked at byte by byte, wherever they stand.
std::optional<exercise_problem> refused_byte(std::string_view bytes) {
    for (int line = 1; !bytes.empty();) {
        const std::size_t length = utf8_length(bytes);
        if (length == 0) return exercise_problem{line, "ce n'est pas de l'UTF-8"};
        if (is_refused_control(bytes)) return exercise_problem{line, "caractère de contrôle"};
        line += bytes[0] == '\n';
        bytes.remove_prefix(length);
    }
    return std::nullopt;
}

/// Where a long text ends of which three quotes were found: up to two more belong to it.
std::size_t end_of_quotes(std::string_view bytes, std::size_t at) {
    const std::size_t other = std::min(bytes.find_first_not_of(bytes[0], at), bytes.size());
    return std::min(other, at + 5);
}

/// The bytes of the text that begins there, its quotes included; the rest where it has no end.
std::size_t text_length(std::string_view bytes) {
    const char quote = bytes[0];
    const std::string_view long_quote = quote == '"' ? "\"\"\"" : "'''";
    const bool is_long = bytes.starts_with(long_quote);
    const std::string_view ending = is_long ? long_quote : long_quote.substr(0, 1);
    for (std::size_t at = is_long ? 3 : 1; at < bytes.size(); ++at) {
        if (bytes.substr(at).starts_with(ending))
            return is_long ? end_of_quotes(bytes, at) : at + 1;
        if (!is_long && bytes[at] == '\n') return at;
        at += quote == '"' && bytes[at] == '\\';
    }
    return bytes.size();
}

/// The bytes up to the next one that counts: a text, a comment, or a byte.
std::size_t piece_length(std::string_view bytes) {
    if (bytes[0] == '"' || bytes[0] == '\'') return text_length(bytes);
    if (bytes[0] == '#') return std::min(bytes.find('\n'), bytes.size());
    return 1;
}

std::optional<exercise_problem> refused_outside_texts(std::string_view bytes) {
    int line = 1, points = 0, open = 0;
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, piece_length(bytes));
        if (!is_ascii(piece[0]))
            return exercise_problem{line, "caractère accentué ou autre hors d'un texte"};
        if (piece == "[" || piece == "{") ++open;
        if (piece == "]" || piece == "}") open = std::max(open - 1, 0);
        if (piece == "\n" && open == 0) points = 0;
        if (piece == "." && ++points > most_points)
            return exercise_problem{line, "trop de tables les unes dans les autres"};
        line += static_cast<int>(std::ranges::count(piece, '\n'));
        bytes.remove_prefix(piece.size());
    }
    return std::nullopt;
}

}  // namespace

std::optional<exercise_problem> refused_at_sight(std::string_view bytes) {
    const std::optional<exercise_problem> byte = refused_byte(bytes);
    return byte ? byte : refused_outside_texts(bytes);
}
