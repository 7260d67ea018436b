#include "station_view/journal_viewer.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "session/keyed_rows.h"
#include "station_view/window_words.h"
#include "viewer/document_text.h"
#include "viewer/viewer_window.h"

namespace {

using lines = std::vector<std::string>;

struct document_row {
    paged_document key;
    const char *process, *pdf;
    window_word title;
    // A journal is read from its end.
    bool opens_at_end;
};

constexpr document_row documents[] = {
    {paged_document::journal, "zk4sim-journal", "journal.pdf", window_word::journal_title, true},
    {paged_document::verdict, "zk4sim-verdict", "verdict.pdf", window_word::verdict_title, false}};
static_assert(one_row_each(documents));

// The viewer removes its document when the command is over: a copy stays, where all of it could be
// written. The name of the copy comes before.
constexpr char pdf_script[] = R"(
part=.$copy.$$
is_whole() { tail -n 1 -- "$1" | grep -qx '%%EOF'; }
if ! { is_whole "$1" && cp -- "$1" "$part" && mv -fT -- "$part" "$copy"; } 2>/dev/null; then
    rm -f -- "$part"
    echo "zk4sim: $copy: n'a pas pu être écrit" >&2
    exit 1
fi
for reader in xpdf evince okular atril xreader qpdfview mupdf zathura; do
    command -v "$reader" >/dev/null && exec "$reader" "$copy"
done
)";

/// The script as a program that this process and its children can start, and that nobody has to
/// remove.
std::string pdf_command(const std::string& copy) {
    const int written = memfd_create("pdf", MFD_CLOEXEC);
    const std::string script = "#!/bin/sh\ncopy=" + copy + pdf_script;
    const auto size = static_cast<ssize_t>(script.size());
    if (write(written, script.data(), script.size()) != size) return "xpdf";
    const std::string folder = "/proc/" + std::to_string(getpid()) + "/fd/";
    // What is open for writing cannot be run.
    const int kept = open((folder + std::to_string(written)).c_str(), O_RDONLY | O_CLOEXEC);
    close(written);
    return folder + std::to_string(kept);
}

lines read_lines(const std::string& file) {
    lines found;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) found.push_back(line);
    return found;
}

lines for_screen(const lines& text) {
    lines found(text.size());
    std::ranges::transform(text, found.begin(), document_text::for_text);
    return found;
}

lines for_print(const lines& text) {
    line_markup::column_layout columns;
    lines found;
    for (const std::string& line : text) found.push_back(document_text::for_pdf(line, columns));
    return found;
}

/// What is done once the viewer is open: its filters for documents exist from then on.
struct opened_viewer {
    OFD_afficheur& viewer;
    lines printed, text;
    std::string title;
    bool at_end;

    static void prepare(void* self) {
        auto& opened = *static_cast<opened_viewer*>(self);
        opened.viewer.window->copy_label(opened.title.c_str());
        opened.viewer.print_filter->lines = opened.printed.data();
        opened.viewer.text_filter->lines = opened.text.data();
        if (opened.at_end) opened.viewer.page_numero(opened.viewer.display_filter->nb_pages());
    }
};

}  // namespace

int show_document(paged_document what, const std::string& file, language in) {
    const document_row& document = row_of(documents, what);
    prctl(PR_SET_NAME, document.process);
    const lines text = read_lines(file);
    if (text.empty()) return 1;
    lines screen = for_screen(text);
    OFD_afficheur viewer(nullptr, in == language::english);
    const std::string title = text_of(document.title, in);
    std::error_code gone;
    const std::string folder = std::filesystem::current_path(gone).string();
    opened_viewer opened{viewer, for_print(text), text, title + colon.in(in) + folder,
                         document.opens_at_end};
    Fl::add_timeout(0, opened_viewer::prepare, &opened);
    viewer.activation(screen.data(), static_cast<int>(screen.size()), title,
                      pdf_command(document.pdf));
    return 0;
}
