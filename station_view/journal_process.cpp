#include "station_view/journal_process.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "session/failure.h"
#include "session/keyed_rows.h"
#include "session/system_errors.h"
#include "station_view/journal_viewer.h"

namespace {

constexpr char english_word[] = "en", french_word[] = "fr";

struct word_row {
    paged_document key;
    const char* command_word;
};

constexpr word_row words[] = {{paged_document::journal, "--journal"},
                              {paged_document::verdict, "--verdict"}};
static_assert(one_row_each(words));

const word_row* row_called(std::string_view word) {
    const auto* const found = std::ranges::find(words, word, &word_row::command_word);
    return found == std::end(words) ? nullptr : found;
}

/// A nameless file of these lines, which a process that is started inherits. Closed at the end.
class handed_lines {
public:
    explicit handed_lines(const std::vector<std::string>& lines)
        : descriptor_(or_refuse(memfd_create("journal", 0), "journal")) {
        std::string bytes;
        for (const std::string& line : lines) bytes += line + "\n";
        const auto size = static_cast<ssize_t>(bytes.size());
        if (write(descriptor_, bytes.data(), bytes.size()) == size) return;
        const int error = errno;
        ::close(descriptor_);
        throw refusal("journal: " + system_error_words(error));
    }
    ~handed_lines() { ::close(descriptor_); }
    handed_lines(const handed_lines&) = delete;
    handed_lines& operator=(const handed_lines&) = delete;

    /// Where the process finds it.
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

/// From now on this process goes with the one that started it. False when that one is gone already.
bool ends_with_its_station(pid_t station) {
    return prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == station;
}

}  // namespace

void journal_process::show(const std::vector<std::string>& lines, language in) {
    close();
    const handed_lines handed(lines);
    const char* const language_word = in == language::english ? english_word : french_word;
    child_ = std::make_unique<child_process>(
        "journal", child_command{{own_program, row_of(words, what_).command_word, handed.path(),
                                  language_word, std::to_string(getpid())},
                                 "",
                                 true});
}

void journal_process::close() {
    if (!child_) return;
    child_->ask_to_end();
    constexpr int looks = 500;
    for (int look = 0; !child_->ended(); ++look) {
        if (look == looks) child_->end_by_force();
        usleep(2000);
    }
    child_.reset();
}

bool is_journal_command(int argc, char** argv) { return argc == 5 && row_called(argv[1]); }

int run_journal_command(char** argv) {
    const bool english = std::string_view(argv[3]) == english_word;
    if (!ends_with_its_station(static_cast<pid_t>(std::atoi(argv[4])))) return 1;
    return show_document(row_called(argv[1])->key, argv[2],
                         english ? language::english : language::french);
}
