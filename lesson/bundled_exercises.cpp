#include "lesson/bundled_exercises.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/system_errors.h"

namespace {

namespace fs = std::filesystem;

constexpr char ending[] = ".toml";

bool is_there(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error) && !fs::is_directory(path, error);
}

/// A name is no path: it cannot lead out of the folder.
bool is_name(const std::string& word) {
    return !word.empty() && word.find('/') == std::string::npos && word[0] != '.';
}

}  // namespace

std::string bundled_exercises_folder() {
    const char* const named = std::getenv("QUORIN_EXERCICES");
    if (named && *named != '\0') return named;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return (program.parent_path().parent_path() / "share" / "quorin" / "exercices").string();
}

std::vector<std::string> bundled_exercise_names() {
    const std::string folder = bundled_exercises_folder();
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator file(folder, error), end; !error && file != end;
         file.increment(error))
        if (file->path().extension() == ending) names.push_back(file->path().stem().string());
    if (error) throw refusal(recorded_name(folder) + ": " + system_error_words(error.value()));
    std::ranges::sort(names);
    return names;
}

std::string bundled_exercise_file(const std::string& name) {
    return (fs::path(bundled_exercises_folder()) / (name + ending)).string();
}

std::string exercise_file_called(const std::string& word) {
    if (word == "-" || is_there(word)) return word;
    if (is_name(word) && is_there(bundled_exercise_file(word))) return bundled_exercise_file(word);
    throw refusal(recorded_name(word) +
                  ": ni un fichier ni un exercice fourni (voir quorin-lesson list)");
}
