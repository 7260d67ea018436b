#include "lesson/toml_depth.h"

#include <algorithm>

namespace {

constexpr int most_points = 1000;

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

}  // namespace

int line_too_deep(std::string_view bytes) {
    int line = 1, points = 0, open = 0;
    while (!bytes.empty()) {
        const std::size_t length = piece_length(bytes);
        const std::string_view piece = bytes.substr(0, length);
        if (piece == "[" || piece == "{") ++open;
        if (piece == "]" || piece == "}") open = std::max(open - 1, 0);
        if (piece == "\n" && open == 0) points = 0;
        if (piece == "." && ++points > most_points) return line;
        line += static_cast<int>(std::ranges::count(piece, '\n'));
        bytes.remove_prefix(length);
    }
    return 0;
}
