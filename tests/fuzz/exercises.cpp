// Any bytes as an exercise, alone and within or behind a good one: read, or refused with lines in
// order; what is read comes back from its hidden copy.
#include <algorithm>

#include "lesson/exercise_file.h"
#include "lesson/exercise_text.h"
#include "lesson/hidden_part.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

constexpr std::string_view sensors[] = {"s1", "dc"}, commands[] = {"C1"};

struct small_station : station_model {
    std::string_view name() const override { return "essai"; }
    name_span inputs() const override { return sensors; }
    name_span outputs() const override { return commands; }
    void set_command(int, std::int32_t) override {}
    void step(double) override {}
    int sensor(int) const override { return 0; }
};

const std::string head = "format = 1\ntitre = \"T\"\nenonce = \"E\"\n";
const std::string begun =
    head + "[diagnostic]\npannes = [\"C1=dead\"]\n[[but]]\ntexte = \"G\"\nquand = [\"s1=1\"]\n";

void check_problems(const exercise_problems& problems, const std::string& text) {
    const auto last = 1 + std::count(text.begin(), text.end(), '\n');
    law(!problems.empty(), "a refusal has a reason");
    law(std::ranges::is_sorted(problems, {}, &exercise_problem::line), "lines are in order");
    for (const exercise_problem& each : problems)
        law(each.line >= 1 && each.line <= last && !each.reason.empty(), "a line of the file");
}

void check_copy(exercise read) {
    auto copy = read_exercise(hidden_exercise_text(read), small_station());
    law(std::holds_alternative<exercise>(copy), "a copy is an exercise");
    std::get<exercise>(copy).digest = read.digest;
    law(std::get<exercise>(copy) == read, "a copy is the same exercise");
}

void read_all(const std::string& text) {
    const auto read = read_exercise(text, small_station());
    if (const auto* problems = std::get_if<exercise_problems>(&read))
        check_problems(*problems, text);
    else
        check_copy(std::get<exercise>(read));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    read_all(bytes);
    read_all(begun + bytes);
    read_all(head + bytes + "\n[[but]]\ntexte = \"G\"\nquand = [\"s1=1\"]\n");
    read_all(begun + "texte_en = \"" + bytes + "\"\n");
    read_all(head + "cache = \"" + hidden_part(bytes) + "\"\n[station]\nduree_s = 1\n[[bilan]]\n" +
             "texte = \"B\"\ncompte = \"bonnes\"\nau_plus = 1\n");
    return 0;
}
