// The exercises that come with the programs, by their names.
#pragma once
#include <string>
#include <vector>

/// The folder that holds them: that of the variable QUORIN_EXERCICES, else
/// ../share/quorin/exercices seen from the folder of the program that runs.
[[nodiscard]] std::string bundled_exercises_folder();

/// Their names, in alphabetical order: "01_premiere_commande" for 01_premiere_commande.toml. Throws
/// `refusal` when the folder cannot be read.
[[nodiscard]] std::vector<std::string> bundled_exercise_names();

/// The file of a bundled exercise, whether it is there or not.
[[nodiscard]] std::string bundled_exercise_file(const std::string& name);

/// The file that a user means: one of that path, else the bundled exercise of that name; "-" is the
/// standard input. Throws `refusal` when there is neither.
[[nodiscard]] std::string exercise_file_called(const std::string& word);
