#include "recording/recording_options.h"

#include <algorithm>

#include "session/failure.h"
#include "session/keyed_rows.h"

namespace {

constexpr double latest_s = 1e9;

enum class recording_option { csv, vcd, play, at, count };

using row = option_row<recording_option, recording_options>;

// clang-format off
constexpr row rows[] = {
    {recording_option::csv, "--csv", "FICHIER", "y enregistre la session (- : la sortie standard)", false,
     [](recording_options& o, const std::string& value) { o.csv = value; }},
    {recording_option::vcd, "--vcd", "FICHIER", "de même, pour les visionneuses de chronogrammes", false,
     [](recording_options& o, const std::string& value) { o.vcd = value; }},
    {recording_option::play, "--play", "FICHIER", "rejoue un enregistrement au lieu d'être commandé", false,
     [](recording_options& o, const std::string& value) { o.play = value; }},
    {recording_option::at, "--at", "S", "avec --play: à partir de S secondes simulées", false,
     [](recording_options& o, const std::string& value) { o.at_s = number_between(value, 0, latest_s); }},
};
// clang-format on
static_assert(one_row_each(rows));

// What every recording decides, whatever its station.
constexpr const char* decided[] = {"--fault", "--duration", "--exec"};

bool has(const std::vector<std::string>& words, const std::string& word) {
    return std::ranges::find(words, word) != words.end();
}

}  // namespace

void add_recording_options(command_line& line, recording_options& options) {
    add_options(line, rows, options);
}

void check_together(const recording_options& options, const std::vector<std::string>& given,
                    const std::vector<std::string>& set_up) {
    if (options.at_s && options.play.empty()) throw misuse("--at demande --play");
    if (options.play.empty()) return;
    std::vector<std::string> excluded(std::begin(decided), std::end(decided));
    excluded.insert(excluded.end(), set_up.begin(), set_up.end());
    for (const std::string& each : excluded)
        if (has(given, each)) throw misuse("--play et " + each + " s'excluent");
}
