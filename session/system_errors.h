// What the system says when it refuses something, in the language of the messages.
#pragma once
#include <string>

/// The words for an errno, in French (UTF-8) and in any locale: the commonest ones, "erreur 121"
/// for the others.
///
///     system_error_words(2)  // "fichier ou dossier introuvable"
///     system_error_words(121)  // "erreur 121"
[[nodiscard]] std::string system_error_words(int number);

/// `result` as a system call returned it. Throws `refusal`, with what was being done and the words
/// for errno, when it is below 0.
int or_refuse(int result, const std::string& doing);
