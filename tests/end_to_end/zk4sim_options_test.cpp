// zk4sim's options are told in four places: by the table that reads them, by --help, by the man
// page and by the guide. They agree.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "programs/zk4sim/options.h"
#include "recording/recording_options.h"
#include "session/session_options.h"
#include "tests/support/programs.h"

namespace {

using names = std::set<std::string>;

std::string text_of(const std::string& path) {
    std::ifstream in(QUORIN_SOURCE "/" + path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The options in lines of that form, however many a line has.
names options_in(const std::string& text, const std::string& form) {
    names found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!std::regex_search(line, std::regex(form))) continue;
        const std::regex option("--[a-z0-9-]+");
        for (std::sregex_iterator each(line.begin(), line.end(), option), end; each != end; ++each)
            found.insert(each->str());
    }
    return found;
}

command_line every_option() {
    static zk4sim_options own;
    static recording_options kept;
    static session_options every;
    command_line line = zk4sim_command_line(own);
    add_recording_options(line, kept);
    add_session_options(line, every);
    return line;
}

/// Those that the program takes, and the two that every program has.
names taken_options() {
    const command_line line = every_option();
    names taken = {"--help", "--version"};
    for (const command_option& each : line.options) taken.insert(each.name);
    EXPECT_EQ(taken.size(), line.options.size() + 2) << "one row has the name of another";
    return taken;
}

TEST(Zk4simOptions, TheHelpTellsThemAllAndNoOther) {
    const std::string help = run_program({built("zk4sim"), "--help"}).out;
    EXPECT_EQ(options_in(help, "^ +(-h,)?--"), taken_options()) << help;
}

TEST(Zk4simOptions, TheManPageTellsThemAllAndNoOther) {
    const std::string page =
        std::regex_replace(text_of("docs/man/zk4sim.1"), std::regex(R"(\\-)"), "-");
    EXPECT_EQ(options_in(page, "^\\.(B|BI|BR) --"), taken_options());
}

TEST(Zk4simOptions, TheGuideTellsThemAllAndNoOther) {
    EXPECT_EQ(options_in(text_of("docs/zk4sim.md"), "^\\| `--"), taken_options());
}

TEST(Zk4simOptions, EachHasAMeaningInOneLine) {
    for (const command_option& each : every_option().options) {
        EXPECT_GT(each.meaning.size(), 5u) << each.name;
        EXPECT_EQ(each.meaning.find('\n'), std::string::npos) << each.name;
    }
}

}  // namespace
