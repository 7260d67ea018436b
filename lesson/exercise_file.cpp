#include "lesson/exercise_file.h"

#include <algorithm>
#include <istream>

#include "lesson/exercise_tables.h"
#include "lesson/sha256.h"
#include "recording/input_bytes.h"
#include "recording/recorded_text.h"

namespace {

std::string lines_of(const std::string& path, const exercise_problems& problems) {
    std::string lines;
    for (const exercise_problem& each : problems)
        lines += (lines.empty() ? "" : "\n") + recorded_name(path) + ":" +
                 std::to_string(each.line) + ": " + each.reason;
    return lines;
}

std::string bytes_of(const std::string& path) {
    input_bytes file(path);
    std::string bytes(most_exercise_bytes + 1, '\0');
    const std::streamsize took =
        file.sgetn(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(took));
    if (bytes.size() > most_exercise_bytes)
        throw refusal(recorded_name(path) + ": plus de " + std::to_string(most_exercise_bytes) +
                      " octets, ce n'est pas un exercice");
    return bytes;
}

}  // namespace

exercise_refusal::exercise_refusal(const std::string& path, exercise_problems found)
    : failure(refusal(lines_of(path, found))), problems(std::move(found)) {}

std::variant<exercise, exercise_problems> read_exercise(std::string_view bytes,
                                                        const station_model& model) {
    const auto file = read_toml(bytes);
    if (const auto* problem = std::get_if<exercise_problem>(&file))
        return exercise_problems{*problem};
    exercise_reading reading(model);
    exercise read;
    take_exercise(reading, std::get<toml_table>(file), read);
    std::ranges::stable_sort(reading.problems, {}, &exercise_problem::line);
    if (!reading.problems.empty()) return reading.problems;
    read.digest = sha256_digits(bytes);
    return read;
}

exercise read_exercise_file(const std::string& path, const station_model& model) {
    auto read = read_exercise(bytes_of(path), model);
    if (auto* problems = std::get_if<exercise_problems>(&read))
        throw exercise_refusal(path, std::move(*problems));
    return std::get<exercise>(std::move(read));
}
