// quorin-io record, on a link of the test's own or on a station's: what stands in its files.
#pragma once
#include <regex>

#include "recording/input_bytes.h"
#include "recording/recording_reader.h"
#include "tests/end_to_end/quorin_io_fixture.h"
#include "tests/support/runtime_folder.h"

/// All events of a recording, first block and end included. Throws what the reader refuses.
inline std::vector<recorded_event> events_of(const std::string& file) {
    input_bytes bytes(file);
    recording_reader recording(file, bytes);
    std::vector<recorded_event> events = recording.head().events;
    while (recording.peek()) events.push_back(recording.take());
    EXPECT_TRUE(recording.whole()) << file;
    return events;
}

/// Those of one input or output.
inline std::vector<recorded_event> events_of(const std::string& file, const std::string& name) {
    std::vector<recorded_event> events;
    for (const recorded_event& each : events_of(file))
        if (each.name == name) events.push_back(each);
    return events;
}

/// A text with every time but 0 as T.
inline std::string timeless(const std::string& text) {
    return std::regex_replace(text, std::regex("(^|\n)(#?)[1-9][0-9]*(,|\n)"), "$1$2T$3");
}

class QuorinIoRecord : public QuorinIo {
protected:
    /// A recorder on the link of the test, once its first block is in the file.
    std::unique_ptr<program> recorder(const std::string& file) {
        auto started = std::make_unique<program>(command({"record", file}));
        EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(file); }));
        EXPECT_TRUE(wait_until([&] { return !bytes_of(file).empty(); })) << started->err();
        return started;
    }

    const runtime_folder control;
    const temporary_folder files;
    const std::string csv = files / "r.csv", vcd = files / "r.vcd";
};
