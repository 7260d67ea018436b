// What a recording or a replay says when something goes wrong, in the French of the error stream.
// The file's name, or the recording's, and ": " come first.
#pragma once
#include <string_view>

namespace trouble_words {

/// Of a file: behind the system's words for what keeps it from being written; and all there is to
/// say when nobody reads it, or when it is too slow to take the session's end.
inline constexpr std::string_view not_recorded = "; la suite n'est pas enregistrée",
                                  nobody_reads =
                                      "personne ne lit; la suite attend, puis sera perdue",
                                  end_not_written = "la fin n'a pas pu être écrite à temps";

/// Of a replay's first difference, around its milliseconds, kind, name and two values: "à 50 ms,
/// entree te: 0 dans l'enregistrement, 1 à la station". A value that one side has not is `nothing`.
inline constexpr std::string_view before_ms = ": à ", behind_ms = " ms, ",
                                  recorded = " dans l'enregistrement, ", played = " à la station",
                                  nothing = "rien";

}  // namespace trouble_words
