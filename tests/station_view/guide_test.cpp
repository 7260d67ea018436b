// The guide against the program: whatever the window says or takes has its row, in both languages,
// and no row names what does not exist.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "panel/form_children.h"
#include "session/faults.h"
#include "station_view/fault_labels.h"
#include "station_view/incident_advice.h"
#include "station_view/window_actions.h"
#include "station_view/window_words.h"
#include "tests/support/pages.h"
#include "workcell/station_names.h"

namespace {

using names = std::multiset<std::string>;
using cells = std::vector<std::string>;

/// A guide, and the headings of the sections that are held against the program.
struct guide {
    language in;
    std::string file, first_session, good_base, commands, sensors, time, keys, incidents, faults,
        panel;
};

const guide guides[] = {
    {language::french, "docs/guide.md", "Première séance", "Un bon support, à la main",
     "Les commandes", "Les capteurs", "Le temps", "Les touches", "Les incidents", "Les pannes",
     "Le panneau en détail"},
    {language::english, "docs/guide_en.md", "First session", "A good base, by hand", "The commands",
     "The sensors", "Time", "The keys", "Incidents", "Faults", "The panel in detail"}};

class Guide : public testing::TestWithParam<guide> {
protected:
    std::string part(const std::string& heading) const {
        std::string found = section(page(GetParam().file), heading);
        EXPECT_NE(found, "") << GetParam().file << ": " << heading;
        return found;
    }
    language in() const { return GetParam().in; }
};

std::string without_blanks(const std::string& cell) {
    const std::size_t begin = cell.find_first_not_of(' ');
    if (begin == std::string::npos) return "";
    return cell.substr(begin, cell.find_last_not_of(' ') + 1 - begin);
}

/// The rows of a table, without its head: "| a | b |" is {"a", "b"}.
std::vector<cells> rows_of(const std::string& text) {
    std::vector<cells> rows;
    bool head = true;
    for (const std::string& line : lines_of(text)) {
        if (!line.starts_with("|")) head = true;
        if (!line.starts_with("|") || head) {
            head = head && !line.starts_with("|---");
            continue;
        }
        cells row;
        for (std::size_t at = 1; at < line.size();) {
            const std::size_t end = std::min(line.find('|', at), line.size());
            row.push_back(without_blanks(line.substr(at, end - at)));
            at = end + 1;
        }
        rows.push_back(row);
    }
    return rows;
}

cells matches(const std::string& text, const std::string& what) {
    const std::regex pattern(what);
    cells found;
    for (std::sregex_iterator each(text.begin(), text.end(), pattern), end; each != end; ++each)
        found.push_back((*each)[0]);
    return found;
}

cells quoted(const std::string& text) { return matches(text, "`[A-Za-z][A-Za-z0-9_]*`"); }

names first_names(const std::string& text) {
    names found;
    for (const cells& row : rows_of(text))
        for (const std::string& name : quoted(row.at(0)))
            found.insert(name.substr(1, name.size() - 2));
    return found;
}

/// What a program would do after the table of a good base: commands, values, seconds, in order.
cells acts_of(const std::string& text) {
    cells acts;
    for (const cells& row : rows_of(text))
        for (const std::size_t column : {1, 2})
            for (const std::string& act : matches(row.at(column), "`\\w+` [01]|\\d+ s"))
                acts.push_back(act);
    return acts;
}

std::string on_one_line(std::string label) {
    std::ranges::replace(label, '\n', ' ');
    return label;
}

TEST_P(Guide, NamesEachCommandAndEachSensorOnce) {
    EXPECT_EQ(first_names(part(GetParam().commands)),
              names(station_outputs.begin(), station_outputs.end()));
    EXPECT_EQ(first_names(part(GetParam().sensors)),
              names(station_inputs.begin(), station_inputs.end()));
}

TEST_P(Guide, TellsEachIncidentAndWhatToDo) {
    std::set<cells> expected;
    for (int i = 0; i < static_cast<int>(station::incident::count); ++i) {
        const auto kind = static_cast<station::incident>(i);
        const std::string text = "`" + std::string(station::incident_text(kind)) + "`";
        const auto [what, advice] = tell_incident(kind, in());
        expected.insert({in() == language::english ? what + " (" + text + ")" : text, advice});
    }
    const std::vector<cells> rows = rows_of(part(GetParam().incidents));
    EXPECT_EQ(std::set<cells>(rows.begin(), rows.end()), expected);
}

TEST_P(Guide, TellsEachKindOfFaultAndItsColumn) {
    std::set<cells> expected, told;
    for (int i = 0; i < static_cast<int>(fault_kind::count); ++i) {
        const auto kind = static_cast<fault_kind>(i);
        expected.insert({"`" + std::string(fault_kind_word(kind)) + "`", fault_column(kind, in())});
    }
    for (const cells& row : rows_of(part(GetParam().faults))) told.insert({row.at(0), row.at(1)});
    EXPECT_EQ(told, expected);
}

TEST_P(Guide, TellsEachKeyAndItsButton) {
    std::set<cells> expected, told;
    for (int i = 0; i < static_cast<int>(window_action::count); ++i) {
        const action_row& row = row_of_action(static_cast<window_action>(i));
        expected.insert({row.key_name.in(in()), on_one_line(row.label.in(in()))});
    }
    for (const cells& row : rows_of(part(GetParam().keys))) told.insert({row.at(0), row.at(1)});
    EXPECT_EQ(told, expected);
}

TEST_P(Guide, TellsEachStateOfTheSession) {
    std::set<std::string> expected, told;
    for (const window_word word :
         {window_word::running, window_word::paused, window_word::nothing_changed,
          window_word::emergency, window_word::replay, window_word::dead_link,
          window_word::exercise_over})
        expected.insert(text_of(word, in()));
    for (const cells& row : rows_of(part(GetParam().time))) told.insert(row.at(0));
    EXPECT_EQ(told, expected);
}

// The station's page has the table that a test plays.
TEST_P(Guide, HasTheGoodBaseOfTheStationsPage) {
    const cells acts = acts_of(section(page("docs/workcell.md"), "A good base, by hand"));
    EXPECT_GT(acts.size(), 50u);
    EXPECT_EQ(acts_of(part(GetParam().good_base)), acts);
}

TEST_P(Guide, HasTheFirstSessionOfTheReadme) {
    const cells clicks = quoted(section(page("README.md"), "A first session"));
    EXPECT_GT(clicks.size(), 20u);
    EXPECT_EQ(quoted(part(GetParam().first_session)), clicks);
}

TEST_P(Guide, TellsThePanelsOrderOfButtons) {
    std::string order;
    for (const quorin_form::child& each : quorin_form::children)
        if (each.kind == quorin_form::shape::button)
            order += (order.empty() ? "" : ", ") + std::string(each.name);
    std::string told = part(GetParam().panel);
    std::ranges::replace(told, '\n', ' ');
    told = std::regex_replace(told, std::regex(" +"), " ");
    EXPECT_NE(told.find(" " + order + "."), std::string::npos) << order;
}

INSTANTIATE_TEST_SUITE_P(Languages, Guide, testing::ValuesIn(guides), [](const auto& each) {
    return each.param.in == language::english ? "English" : "French";
});

}  // namespace
