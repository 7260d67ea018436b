// The example station convoyeur: its encoder, by the carriage's place, and who counts its pulses.
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/pages.h"

namespace {

const std::string path = "PATH=" QUORIN_PROGRAMS ":" + std::string(std::getenv("PATH"));

/// What a session of the station prints, which a shell's lines command.
outcome run_convoyeur(const std::string& options, const std::string& lines) {
    return run_program({"sh", "-c", "exec convoyeur " + options + " --exec '" + lines + "'"},
                       {path});
}

TEST_F(Zk4sim, TheCarriageTurnsItsEncoderByTenCentimetresAPulse) {
    // Ten centimetres a second from the left end, from step to step of the paused session.
    const struct {
        const char *command, *step_s;
        int pulse;
    } moves[] = {
        {"AVANCE=0", "1", 0},    {"AVANCE=1", "0.49", 0}, {"AVANCE=1", "0.01", 1},
        {"AVANCE=1", "0.49", 1}, {"AVANCE=1", "0.01", 0}, {"AVANCE=1", "0.5", 1},
        {"AVANCE=1", "0.5", 0},  {"AVANCE=1", "0.6", 1},  {"AVANCE=0", "1", 1},
        {"RECULE=1", "0.1", 1},  {"RECULE=1", "0.01", 0}, {"AVANCE=1", "1", 0},
    };
    std::string lines, wanted;
    for (const auto& [command, step_s, pulse] : moves) {
        lines += std::string("quorin-io set ") + command + " && quorin-io step " + step_s +
                 " && quorin-io get codeur\n";
        wanted += std::to_string(pulse) + "\n";
    }
    const outcome end = run_convoyeur("--paused", lines);
    EXPECT_EQ(end.status, 0);
    std::string read;
    for (const std::string& line : lines_of(end.err))
        if (line == "0" || line == "1") read += line + "\n";
    EXPECT_EQ(read, wanted) << end.err;
}

// Whoever counts three pulses stops the carriage at thirty centimetres, where no sensor is.
TEST_F(Zk4sim, ThePagesScriptStopsTheCarriageByItsPulses) {
    const std::vector<std::string> scripts = code_blocks(page("docs/developer_guide.md"), "sh");
    ASSERT_EQ(scripts.size(), 1u);
    const current_folder folder;
    const outcome end = run_program({"sh", "-c", scripts[0]}, {path});
    EXPECT_EQ(end.status, 0) << end.err;
    const std::string rows = bytes_of("seance.csv");
    const auto times = [&](const std::string& row) {
        const std::vector<std::string> all = lines_of(rows);
        return std::ranges::count_if(all, [&](const auto& each) { return each.ends_with(row); });
    };
    EXPECT_EQ(times(",entree,codeur,1"), 3) << rows;
    EXPECT_EQ(times(",entree,codeur,0"), 4) << "the first is how it begins: " << rows;
    EXPECT_LT(rows.rfind(",entree,codeur,0"), rows.rfind(",sortie,AVANCE,0")) << rows;
    EXPECT_EQ(rows.find("entree,milieu,1"), std::string::npos) << rows;
}

}  // namespace
