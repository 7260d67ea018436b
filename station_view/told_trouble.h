// What went wrong with a recording, a replay or a document, in the window's language. The error
// stream has it in French.
#pragma once
#include <string>

#include "lesson/bilingual.h"

/// `french` is what a session tells as its trouble, or why something could not be opened; one line,
/// UTF-8. Names of files, signals and incidents of other stations stay as they are, and so does
/// what the tables do not have.
///
///     told_trouble("a.csv: erreur 121", language::english)  // "a.csv: error 121"
[[nodiscard]] std::string told_trouble(const std::string& french, language in);

/// What the system says, in English, for the words of session/system_errors.h; those words where
/// the table does not have them.
[[nodiscard]] std::string english_system_words(const std::string& french);
