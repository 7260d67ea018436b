// Documents on the screen, the journal and the verdict: the paged viewer in a process of its own.
//
// The viewer keeps its program to itself while it is open, and while a document is looked at. The
// station must go on meanwhile, and its emergency stop be there.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "session/child_process.h"
#include "lesson/bilingual.h"

/// Which document the process shows.
enum class paged_document { journal, verdict, count };

class journal_process {
public:
    /// Shows nothing yet.
    explicit journal_process(paged_document what = paged_document::journal) : what_(what) {}
    ~journal_process() { close(); }
    journal_process(const journal_process&) = delete;
    journal_process& operator=(const journal_process&) = delete;

    /// Shows these lines of markup (UTF-8), in the place of those shown before. The program that
    /// calls must hand its command line to `is_journal_command` first. Throws `refusal` when the
    /// process cannot be started.
    void show(const std::vector<std::string>& lines, language in);
    /// Closes the viewer, and whatever it has started.
    void close();

private:
    const paged_document what_;
    std::unique_ptr<child_process> child_;
};

/// Whether the command line is that of such a process.
[[nodiscard]] bool is_journal_command(int argc, char** argv);
/// What that process does: its status.
[[nodiscard]] int run_journal_command(char** argv);
