// What other people's readers find in recordings: Python's csv module, GTKWave's vcd2fst,
// sigrok-cli and a small reader of value change dumps.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "recording/csv_form.h"
#include "recording/input_bytes.h"
#include "recording/recording_reader.h"
#include "recording/vcd_form.h"
#include "tests/support/pages.h"
#include "tests/support/programs.h"
#include "tests/support/runtime_folder.h"

namespace {

class Readers : public testing::Test {
protected:
    /// What tests/recording/read_back finds in a file.
    std::string read_back(const std::string& reader, const std::string& file) {
        const outcome end = run_program({QUORIN_SOURCE "/tests/recording/read_back", reader, file});
        EXPECT_EQ(end.status, 0) << end.err;
        return end.out;
    }
    /// A dump after GTKWave's own format and back.
    std::string through_gtkwave(const std::string& dump) {
        const std::string waves = files / "waves.fst", back = files / "back.vcd";
        const outcome to = run_program({"vcd2fst", dump, waves});
        EXPECT_EQ(to.status, 0) << to.err;
        const outcome from = run_program({"fst2vcd", waves, "-o", back});
        EXPECT_EQ(from.status, 0) << from.err;
        return back;
    }
    std::string through_sigrok(const std::string& dump) {
        const outcome end = run_program({"sigrok-cli", "-i", dump, "-O", "csv"});
        EXPECT_EQ(end.status, 0) << end.err;
        const std::string out = files / "sigrok.csv";
        write_bytes(out, end.out);
        return out;
    }

    const runtime_folder control;
    const temporary_folder files;
    const std::string csv = files / "r.csv", vcd = files / "r.vcd";
};

/// The scope of a kind of event in a dump; empty where it has none.
std::string scope_of(event_kind kind) {
    if (kind == event_kind::input) return "capteurs";
    if (kind == event_kind::output) return "commandes";
    if (kind == event_kind::desk || kind == event_kind::incident) return "pupitre";
    return "";
}

using thing = std::pair<event_kind, std::string>;

/// The variables that a recording's dump has, in its order.
std::vector<thing> variables_of(const recording_head& head) {
    std::vector<thing> all;
    for (const event_kind kind : {event_kind::input, event_kind::output, event_kind::desk})
        for (const recorded_event& each : head.events)
            if (each.kind == kind) all.push_back({kind, each.name});
    if (head.has_desk) all.push_back({event_kind::incident, ""});
    return all;
}

/// What a reader of dumps must find for a recording: its variables, its changes, its end.
struct expected_lines {
    explicit expected_lines(const std::string& file) {
        input_bytes bytes(file);
        recording_reader recording(file, bytes);
        const std::vector<thing> all = variables_of(recording.head());
        for (const auto& [kind, name] : all)
            variables += (kind == event_kind::incident ? "string pupitre.incident"
                                                       : "wire " + scope_of(kind) + "." + name) +
                         "\n";
        for (const recorded_event& each : recording.head().events) note(all, each);
        while (recording.peek()) {
            const recorded_event event = recording.take();
            note(all, event);
            end = event.ms;
        }
        std::map<std::size_t, std::string> before;
        for (const auto& [at, value] : values) {
            const auto& [ms, place] = at;
            if (std::exchange(before[place], value) == value) continue;
            const std::string line =
                std::to_string(ms) + " " + std::to_string(place) + " " + value + "\n";
            changes += line;
            if (all[place].first != event_kind::incident && ms < end) wires += line;
        }
    }

    std::string variables, changes;
    /// The changes of wires before the end, where the last sample of an analyser is.
    std::string wires;
    std::int64_t end = 0;

private:
    void note(const std::vector<thing>& all, const recorded_event& event) {
        const bool incident = event.kind == event_kind::incident;
        const auto found = std::ranges::find(all, thing{event.kind, incident ? "" : event.name});
        if (found == all.end()) return;
        values[{event.ms, static_cast<std::size_t>(found - all.begin())}] = incident ? event.text
                                                                            : event.value == 1
                                                                                ? "1"
                                                                                : "0";
    }

    std::map<std::pair<std::int64_t, std::size_t>, std::string> values;
};

class ScriptedSession : public Readers {
protected:
    void SetUp() override {
        const std::string script =
            "quorin-io set DEPOSE=1; sleep 0.1; quorin-io reset;"
            "quorin-io set BZ1=1 MT=1 MTA=1 --until p1ok=1 --timeout 30;"
            "quorin-io set MTA=0 DEPOSE=1 --until colle=1; quorin-io set DEPOSE=2;"
            "quorin-io desk atu=1; quorin-io wait atu=1; quorin-io desk atu=0; quorin-io wait "
            "atu=0;"
            "quorin-io fault te=stuck0; quorin-io wait te=0; quorin-io set BZ1=0 BZ3=1 --until "
            "b3s=1";
        const outcome end =
            run_program({built("zk4sim"), "--headless", "--csv", csv, "--vcd", vcd, "--title",
                         "poste \"7\", été", "--seed", "29", "--speed", "20", "--exec", script},
                        {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
        ASSERT_EQ(end.status, 0) << end.err;
        ASSERT_GT(lines_of(bytes_of(csv)).size(), 70u);
    }

private:
    leaves_nothing nothing_;
};

TEST_F(ScriptedSession, TheDumpSaysWhatTheCsvSays) {
    const expected_lines expected(csv);
    EXPECT_NE(expected.changes.find(" colle répandue : pas de support en zone 1\n"),
              std::string::npos);
    EXPECT_EQ(read_back("vcd", vcd), "timescale 1ms\n" + expected.variables + expected.changes +
                                         "end " + std::to_string(expected.end) + "\n");
}

TEST_F(ScriptedSession, GtkwaveGivesBackTheSameChangesAndIncidents) {
    EXPECT_EQ(read_back("vcd", through_gtkwave(vcd)), read_back("vcd", vcd));
}

TEST_F(ScriptedSession, SigrokFindsTheChannelsAndEveryMillisecond) {
    const expected_lines expected(csv);
    const std::string samples = "samples " + std::to_string(expected.end) + "\n";
    const outcome shown = run_program({"sigrok-cli", "-i", vcd, "--show"});
    EXPECT_TRUE(shown.out.starts_with("Samplerate: 1000\nChannels: 39\n- b1e: logic\n"))
        << shown.out;
    EXPECT_TRUE(shown.out.ends_with("sample count: " + std::to_string(expected.end) + "\n"))
        << shown.out;
    EXPECT_EQ(read_back("sigrok", through_sigrok(vcd)), expected.wires + samples);
}

TEST_F(ScriptedSession, ASpreadsheetWouldWriteTheSameBytes) {
    EXPECT_EQ(read_back("again", csv), bytes_of(csv));
    EXPECT_NE(bytes_of(csv).find("\n0,session,titre,\"poste \"\"7\"\", été\"\n"),
              std::string::npos);
}

std::string hexadecimal(const std::string& text) {
    std::ostringstream all;
    for (const unsigned char each : text) all << std::hex << each / 16 << each % 16;
    return text.empty() ? "-" : all.str();
}

TEST_F(Readers, PythonFindsEveryFieldOfTheCsvAsItWas) {
    const std::string texts[] = {"été",  "a,b",    "\"",  "\"\"", "say \"te\", twice",
                                 "a\nb", "a\r\nb", "\n",  ",",    "",
                                 " a ",  "a\tb",   "'a'", "=1+1", "-\"-",
                                 "\r",   "; "};
    csv_form form;
    std::string expected;
    for (const char* const each : {"ms genre nom valeur", "0 entree te 0"}) {
        std::istringstream words(each);
        std::string word;
        for (int i = 0; words >> word; ++i) expected += (i ? " " : "") + hexadecimal(word);
        expected += "\n";
    }
    const station_event first[] = {{0, event_kind::input, "te", 0, {}, 0}};
    std::string file = form.text_of(first);
    std::int64_t number = 0;
    for (const std::string& text : texts) {
        ++number;
        const station_event event[] = {{7, event_kind::incident, {}, number, text}};
        file += form.text_of(event);
        expected += hexadecimal("7") + " " + hexadecimal("incident") + " " +
                    hexadecimal(std::to_string(number)) + " " + hexadecimal(text) + "\n";
    }
    write_bytes(csv, file);
    EXPECT_EQ(read_back("csv", csv), expected);
}

/// A session as CSV and as a dump: the names of its inputs and outputs, and changes of the first
/// input at so many times, a pause between.
void write_session(const std::string& csv, const std::string& vcd,
                   const std::vector<std::string>& names, int changes, std::int64_t pause_ms) {
    std::vector<station_event> block = {{0, event_kind::session, "format", 1, {}},
                                        {0, event_kind::session, "station", 0, "x"}};
    for (const event_kind kind : {event_kind::input, event_kind::output})
        for (std::size_t i = 0; i < names.size(); ++i)
            block.push_back({0, kind, names[i], 0, {}, static_cast<int>(i)});
    csv_form rows;
    vcd_form waves;
    std::string as_rows = rows.text_of(block), as_waves = waves.text_of(block);
    std::int64_t ms = 0;
    for (int i = 1; i <= changes; ++i) {
        const station_event change[] = {
            {ms += pause_ms, event_kind::input, names[0], i % 2, {}, 0}};
        as_rows += rows.text_of(change);
        as_waves += waves.text_of(change);
    }
    const station_event end[] = {{ms + pause_ms, event_kind::session, "fin", 0, "durée écoulée"}};
    write_bytes(csv, as_rows + rows.text_of(end));
    write_bytes(vcd, as_waves + waves.text_of(end));
}

std::vector<std::string> long_names(std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back("n" + std::to_string(i));
        names.back().resize(49, 'x');
    }
    return names;
}

// Every reader takes them all: full links, sessions of no time, long ones, names of every kind.
TEST_F(Readers, TakeWhateverALinkMayBe) {
    const struct {
        const char* what;
        std::vector<std::string> names;
        int changes;
        std::int64_t pause_ms;
        bool sampled;
    } rows[] = {
        {"a full link", long_names(41), 5, 3, true},
        {"no time", {"te"}, 0, 0, false},
        {"one step", {"te"}, 0, 10, true},
        {"many changes", {"te", "ts"}, 100000, 1, true},
        {"the latest time", {"te", "ts"}, 2, 300'000'000'000, false},
        {"odd names",
         {"$end", "x$endy$end", "#0", "$",  "a b", " ", "",   "1!",  "a[3]", "a[3:0]", "\\a", "a.b",
          "\"",   "é",          "0",  "b0", "'",   "[", "a]", "[0]", "s",    "(a)",    "{a}", "//"},
         4,
         2,
         true}};
    for (const auto& [what, names, changes, pause_ms, sampled] : rows) {
        SCOPED_TRACE(what);
        write_session(csv, vcd, names, changes, pause_ms);
        const expected_lines expected(csv);
        const std::string end = "end " + std::to_string(expected.end) + "\n";
        const std::string own = read_back("vcd", vcd);
        EXPECT_TRUE(own.ends_with("\n" + expected.changes + end)) << own.substr(0, 5000);
        EXPECT_EQ(read_back("vcd", through_gtkwave(vcd)), own);
        if (!sampled) continue;
        const std::string samples = "samples " + std::to_string(expected.end) + "\n";
        EXPECT_EQ(read_back("sigrok", through_sigrok(vcd)), expected.wires + samples);
    }
}

}  // namespace
