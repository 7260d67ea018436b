// A session as a value change dump, byte for byte.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <vector>

#include "recording/vcd_form.h"

namespace {

using events = std::vector<station_event>;

const events block = {
    {0, event_kind::session, "format", 1, ""}, {0, event_kind::session, "station", 0, "essai"},
    {0, event_kind::fault, "s1", 0, "stuck1"}, {0, event_kind::desk, "dc", 0, ""},
    {0, event_kind::desk, "ac", 0, ""},        {0, event_kind::desk, "atu", 0, ""},
    {0, event_kind::input, "s1", 1, "", 0},    {0, event_kind::input, "s 2", 2, "", 1},
    {0, event_kind::output, "s1", 0, "", 0},
};

constexpr const char* head =
    "$version quorin $end\n"
    "$timescale 1 ms $end\n"
    "$scope module capteurs $end\n"
    "$var wire 1 ! s1 $end\n"
    "$var wire 1 % s_2 $end\n"
    "$upscope $end\n"
    "$scope module commandes $end\n"
    "$var wire 1 & s1 $end\n"
    "$upscope $end\n"
    "$scope module pupitre $end\n"
    "$var wire 1 ( dc $end\n"
    "$var wire 1 ) ac $end\n"
    "$var wire 1 * atu $end\n"
    "$var string 1 + incident $end\n"
    "$upscope $end\n"
    "$enddefinitions $end\n"
    "#0\n"
    "$dumpvars\n"
    "0(\n0)\n0*\n1!\n0%\n0&\n"
    "$end\n";

TEST(VcdForm, TheFirstBlockIsItsHeadAndItsFirstValues) {
    vcd_form form;
    EXPECT_EQ(form.text_of(block), head);
}

TEST(VcdForm, ChangesStandUnderTheirTime) {
    const struct {
        events told;
        std::string text;
    } cases[] = {
        {{{0, event_kind::output, "s1", 1, "", 0}}, "1&\n"},
        {{{0, event_kind::desk, "atu", 1, ""}}, "1*\n"},
        {{{10, event_kind::input, "s1", 0, "", 0}}, "#10\n0!\n"},
        {{{10, event_kind::input, "s1", -1, "", 0}}, "#10\n0!\n"},
        {{{10, event_kind::input, "s 2", 1, "", 1}, {10, event_kind::output, "s1", 1, "", 0}},
         "#10\n1%\n1&\n"},
        {{{10, event_kind::input, "s 2", 0, "", 1}}, ""},
        {{{10, event_kind::output, "s1", 5, "", 0}}, ""},
        {{{10, event_kind::fault, "s1", 0, ""}}, ""},
        {{{10, event_kind::session, "bonnes", 1, ""}}, ""},
        {{{10, event_kind::exercise, "but", 1, ""}}, ""},
        {{{7, event_kind::incident, "", 1, "choc"}, {10, event_kind::input, "s1", 0, "", 0}},
         "#7\nschoc +\n#10\n0!\n"},
        {{{7, event_kind::incident, "", 1, "dépôt, \\ \"x\"\n"}},
         "#7\nsd\\303\\251p\\303\\264t,\\040\\134\\040\"x\"\\012 +\n"},
        {{{10, event_kind::session, "fin", 0, "x"}}, "#10\n"},
        {{{0, event_kind::session, "fin", 0, "x"}}, ""},
    };
    for (const auto& [told, text] : cases) {
        vcd_form form;
        (void)form.text_of(block);
        EXPECT_EQ(form.text_of(told), text);
    }
}

TEST(VcdForm, ALinkWithoutADeskHasNoScopeForIt) {
    vcd_form form;
    const events link = {{0, event_kind::session, "format", 1, ""},
                         {0, event_kind::input, "a", 0, "", 0}};
    const std::string text = form.text_of(link);
    EXPECT_NE(text.find("capteurs"), std::string::npos) << text;
    EXPECT_EQ(text.find("commandes"), std::string::npos) << text;
    EXPECT_EQ(text.find("pupitre"), std::string::npos) << text;
    EXPECT_EQ(text.find("string"), std::string::npos) << text;
}

TEST(VcdForm, EveryNameIsOneWordThatIsNoKeyword) {
    const struct {
        std::string name, word;
    } cases[] = {{"te", "te"},          {"a b  c", "a_b__c"},  {"$end", "_end"},
                 {"x$endy", "x_endy"},  {"$b", "_$b"},         {"", "_"},
                 {"a\tb", "a\\x09b"},   {"d\xE9p", "d\\xE9p"}, {"dépôt", "dépôt"},
                 {"a,\"b\"", "a,\"b\""}};
    for (const auto& [name, word] : cases) {
        vcd_form form;
        const events link = {{0, event_kind::input, name, 1, "", 0}};
        const std::string text = form.text_of(link);
        EXPECT_NE(text.find("$var wire 1 ! " + word + " $end\n"), std::string::npos) << text;
    }
}

TEST(VcdForm, OfSeveralAlikeTheLastOneCounts) {
    vcd_form form;
    const events link = {{0, event_kind::input, "a", 1, "", 0},
                         {0, event_kind::input, "b", 0, "", 1},
                         {0, event_kind::input, "a", 0, "", 2}};
    const std::string text = form.text_of(link);
    EXPECT_NE(text.find("! b $end\n$var wire 1 % a $end\n$upscope"), std::string::npos) << text;
    EXPECT_EQ(form.text_of(events{{5, event_kind::input, "a", 0, "", 0}}), "");
    EXPECT_EQ(form.text_of(events{{6, event_kind::input, "a", 1, "", 2}}), "#6\n1%\n");
}

TEST(VcdForm, EveryVariableHasACodeOfItsOwnThatIsNoValue) {
    events link;
    std::vector<std::string> names;
    for (int i = 0; i < 2000; ++i) names.push_back("n" + std::to_string(i));
    for (int i = 0; i < 2000; ++i)
        link.push_back({0, event_kind::input, names[static_cast<std::size_t>(i)], 0, "", i});
    vcd_form form;
    std::istringstream lines(form.text_of(link));
    std::set<std::string> codes;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("$var wire 1 ")) continue;
        const std::string code = line.substr(12, line.find(' ', 12) - 12);
        EXPECT_EQ(code.find_first_of("#$01xXzZbBrRsS \\"), std::string::npos) << code;
        codes.insert(code);
    }
    EXPECT_EQ(codes.size(), 2000U);
}

}  // namespace
