// Any bytes as a recording: read to the end or refused, and what is read, written again, is the
// same bytes.
#include <cstdlib>
#include <sstream>

#include "recording/csv_form.h"
#include "recording/played_recording.h"
#include "recording/recording_reader.h"
#include "session/failure.h"

namespace {

struct keeper : event_reader {
    void read(std::span<const station_event> events) override { text += form.text_of(events); }
    csv_form form;
    std::string text;
};

const std::string begun =
    "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,essai\n"
    "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n"
    "0,entree,s1,1\n0,entree,s2,0\n0,sortie,C1,0\n";

void read_all(const std::string& text) {
    std::stringbuf bytes(text);
    try {
        recording_reader reader("f", bytes);
        played_recording played(reader);
        keeper kept;
        played.add_reader(kept);
        played.play_all();
        const std::size_t whole = kept.text.size();
        if (text.compare(0, whole, kept.text) != 0) std::abort();
        if (reader.whole() && whole != text.size()) std::abort();
    } catch (const failure& why) {
        if (why.status != exit_status::refused || why.why.empty()) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    read_all(bytes);
    read_all(begun + bytes);
    return 0;
}
