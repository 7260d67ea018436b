#include "station_view/told_trouble.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string_view>

#include "recording/event_rows.h"
#include "recording/trouble_words.h"
#include "session/system_errors.h"
#include "station_view/event_labels.h"
#include "station_view/incident_advice.h"

namespace {

namespace words = trouble_words;

struct error_row {
    int number;
    const char* english;
};

// clang-format off
constexpr error_row errors[] = {
    {EPERM,        "operation not permitted"},
    {ENOENT,       "no such file or folder"},
    {EIO,          "input or output error"},
    {ENXIO,        "nobody reads at the other end"},
    {E2BIG,        "command line too long"},
    {ENOEXEC,      "this is no program"},
    {EAGAIN,       "resource not available at the moment"},
    {ENOMEM,       "not enough memory"},
    {EACCES,       "permission denied"},
    {EBUSY,        "busy"},
    {EEXIST,       "exists already"},
    {ENODEV,       "no such device"},
    {ENOTDIR,      "a part of the path is no folder"},
    {EISDIR,       "this is a folder"},
    {EINVAL,       "the system does not permit this"},
    {ENFILE,       "too many open files on the machine"},
    {EMFILE,       "too many open files"},
    {ETXTBSY,      "program in use"},
    {EFBIG,        "file too large"},
    {ENOSPC,       "no space left on the disk"},
    {ESPIPE,       "this is no ordinary file"},
    {EROFS,        "read-only file system"},
    {EPIPE,        "nobody reads any more"},
    {ENAMETOOLONG, "name too long"},
    {ELOOP,        "too many symbolic links"},
    {EADDRINUSE,   "address already in use"},
    {EDQUOT,       "disk quota reached"},
};
// clang-format on

constexpr std::string_view unnamed_error = "erreur ", unnamed_error_english = "error ";

struct phrase_row {
    std::string_view french, english;
};

// All that is said behind a file's name and ": ".
constexpr phrase_row phrases[] = {
    {words::nobody_reads, "nobody reads; the rest waits, and will be lost"},
    {words::end_not_written, "the end could not be written in time"},
};
constexpr std::string_view not_recorded = "; the rest is not recorded", separator = ": ";

/// What stands between two texts, from `at` on, which is then behind the second one.
std::optional<std::string> cut_at(const std::string& text, std::string_view end, std::size_t& at) {
    const std::size_t found = text.find(end, at);
    if (found == std::string::npos) return std::nullopt;
    const std::string before = text.substr(at, found - at);
    at = found + end.size();
    return before;
}

std::string value_label(event_kind kind, const std::string& value) {
    if (value == words::nothing) return "nothing";
    return kind == event_kind::incident ? tell_incident(value, language::english).what : value;
}

bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

/// What is said of a replay's first difference, from its milliseconds on; nothing where the text is
/// none.
std::optional<std::string> english_difference(const std::string& french) {
    std::size_t at = 0;
    const auto ms = cut_at(french, words::behind_ms, at);
    const auto kind_word = cut_at(french, " ", at);
    const auto kind = event_kind_called(kind_word.value_or(""));
    const auto signal = cut_at(french, separator, at);
    const auto recorded = cut_at(french, words::recorded, at);
    const auto played = cut_at(french, words::played, at);
    if (!ms || !is_number(*ms) || !kind || !signal || !recorded || !played || at != french.size())
        return std::nullopt;
    return *ms + " ms, " + event_kind_label(*kind, language::english) + " " +
           event_name_label(*kind, *signal, language::english) + ": " +
           value_label(*kind, *recorded) + " in the recording, " + value_label(*kind, *played) +
           " at the station";
}

/// With what is said behind its last ": " in English.
std::string english_file_trouble(std::string text) {
    for (const phrase_row& each : phrases)
        if (text.ends_with(each.french))
            return text.substr(0, text.size() - each.french.size()) + std::string(each.english);
    const bool rest_is_lost = text.ends_with(words::not_recorded);
    if (rest_is_lost) text.resize(text.size() - words::not_recorded.size());
    const std::size_t end_of_name = text.rfind(separator);
    if (end_of_name != std::string::npos) {
        const std::size_t begin = end_of_name + separator.size();
        text = text.substr(0, begin) + english_system_words(text.substr(begin));
    }
    return text + std::string(rest_is_lost ? not_recorded : "");
}

}  // namespace

std::string english_system_words(const std::string& french) {
    for (const error_row& each : errors)
        if (system_error_words(each.number) == french) return each.english;
    if (!french.starts_with(unnamed_error)) return french;
    return std::string(unnamed_error_english) + french.substr(unnamed_error.size());
}

std::string told_trouble(const std::string& french, language in) {
    if (in == language::french) return french;
    // A recording may be called like what is said of it.
    for (std::size_t at = 0; (at = french.find(words::before_ms, at)) != std::string::npos; ++at)
        if (const auto found = english_difference(french.substr(at + words::before_ms.size())))
            return french.substr(0, at) + ": at " + *found;
    return english_file_trouble(french);
}
