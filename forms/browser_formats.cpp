#include "forms/browser_formats.h"

#include <FL/Enumerations.H>

#include <cstdlib>

namespace {

constexpr int largest_size = 2000;

/// "@" before another byte begins a format; "@@" and "@." end them.
bool begins_format(const char* text) {
    return text[0] == '@' && text[1] != '\0' && text[1] != '@' && text[1] != '.';
}

/// True when the last format of `formats` takes a number and has none yet.
bool wants_number(const std::string& formats) {
    return !formats.empty() && std::string("BCFS").find(formats.back()) != std::string::npos;
}

/// The toolkit, too, keeps the lowest 32 bits of the number.
bool is_safe(char letter, long number) {
    const int kept = static_cast<int>(number);
    if (letter == 'F') return kept >= 0 && kept < FL_FREE_FONT;
    return letter != 'S' || kept <= largest_size;
}

}  // namespace

std::string without_unsafe_formats(const std::string& line) {
    std::string formats;
    const char* rest = line.c_str();
    while (begins_format(rest)) {
        formats.append(rest, 2);
        rest += 2;
        // Once a format is taken out, one before it that had no number may get what follows as its
        // own: it is then judged again.
        while (wants_number(formats)) {
            char* end;
            const long number = std::strtol(rest, &end, 10);  // as the toolkit reads it
            const bool safe = is_safe(formats.back(), number);
            if (safe)
                formats.append(rest, static_cast<const char*>(end));
            else
                formats.resize(formats.size() - 2);
            rest = end;
            if (safe) break;
        }
    }
    return formats + rest;
}
