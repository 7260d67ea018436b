// A display that dies under a program: a line and a status within a second, the session is ended
// for whoever is on it, and its recording is whole.
#include <algorithm>

#include "tests/end_to_end/zk4sim_session.h"
#include "tests/ioshare/test_segment.h"
#include "tests/support/elapsed.h"
#include "tests/support/mortal_display.h"

namespace {

struct dying_row {
    const char* command;
    int windows, status;
    /// The error stream's lines, some of several programs in any order.
    std::vector<std::string> said;
};

const std::string gone = "zk4sim: l'écran a disparu",
                  made_nothing = "bilan: bonnes=0 mauvaises=0 incidents=0", toolkit = "X I/O error";

const dying_row rows[] = {
    {"zk4sim --no-panel --csv $file", 1, 1, {gone, made_nothing}},
    {"zk4sim --no-panel --paused --csv $file", 1, 1, {gone, made_nothing}},
    {"zk4sim --manual --no-panel --csv $file", 1, 1, {gone, made_nothing}},
    {"zk4sim --exec 'sleep 60' --csv $file", 1, 128 + SIGTERM, {gone, made_nothing}},
    {"zk4sim --headless --csv $file",
     1,
     1,
     {"ident_mem=$ident", toolkit, "zk4sim: panneau terminé (statut 1)", made_nothing}},
    {"quorin -automemlink $served", 1, 1, {"ident_mem=$served", toolkit}},
    {"lecteur $file", 1, 1, {toolkit}},
};

class DyingDisplay : public Zk4sim {
protected:
    std::string filled(std::string text, const std::string& ident) {
        const std::pair<std::string, std::string> words[] = {
            {"$file", file}, {"$ident", ident}, {"$served", std::to_string(link->memory_ident())}};
        for (const auto& [name, value] : words)
            if (const auto at = text.find(name); at != std::string::npos)
                text.replace(at, name.size(), value);
        return text;
    }
    static std::vector<std::string> sorted_lines(const std::string& text) {
        std::vector<std::string> all;
        for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos;
             at = end + 1)
            all.push_back(text.substr(at, end - at));
        std::ranges::sort(all);
        return all;
    }

    void expect_row(const dying_row& row) {
        write_bytes(file, "mine\n");
        mortal_display display;
        program victim(
            {"sh", "-c", "PATH=" QUORIN_PROGRAMS ":$PATH; exec " + filled(row.command, "")},
            {"DISPLAY=" + display.name});
        ASSERT_TRUE(display.shows(row.windows)) << victim.err();
        const bool is_session = std::string(row.command).starts_with("zk4sim");
        const std::string ident = is_session ? wait_for_ident(victim) : "";
        const attached_segment segment(ident);
        const given_clock clock;
        display.die();
        EXPECT_EQ(victim.wait(), row.status);
        EXPECT_LE(clock.now_s(), 1);
        std::vector<std::string> said = row.said;
        for (std::string& each : said) each = filled(each, ident);
        std::ranges::sort(said);
        EXPECT_EQ(sorted_lines(victim.err()), said);
        if (!is_session) return;
        EXPECT_TRUE(segment.session_over()) << "those on the link are told";
        EXPECT_NE(bytes_of(file).find(",session,fin,"), std::string::npos)
            << "and the recording is whole";
    }

    const temporary_folder files;
    const std::string file = files / "a";
    test_server link;
};

TEST_F(DyingDisplay, IsALineAndAStatusWithinASecond) {
    for (const dying_row& row : rows) {
        SCOPED_TRACE(row.command);
        expect_row(row);
    }
}

}  // namespace
