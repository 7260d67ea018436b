// Shows a text file page by page, or exports it without a display:
//     lecteur FICHIER [--english] [--viewer COMMANDE]
//     lecteur FICHIER [--pdf SORTIE] [--ps SORTIE] [--txt SORTIE] [--pages SORTIE]
#include <CLI/CLI.hpp>
#include <FL/Fl.H>
#include <X11/Xlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>

#include "examples/lecteur/document.h"
#include "viewer/display_filter.h"
#include "viewer/document_text.h"
#include "viewer/viewer_window.h"

namespace {

/// What is written without a window. The table below is in this order.
enum class document { pdf, postscript, text, pages };

/// A reference, so that a row without a function does not compile.
using writer = void (&)(std::fstream& out, const lines& text);

using print_filter = OFD_afficheur_filtre_impression;

template <void (print_filter::*print)(std::fstream&), safe_line safe>
void write_printed(std::fstream& out, const lines& text) {
    lines printed = for_print(text, safe);
    print_filter filter(printed.data(), static_cast<int>(printed.size()));
    (filter.*print)(out);
}

void write_text(std::fstream& out, const lines& text) {
    lines written = text;
    OFD_afficheur_filtre_texte(written.data(), static_cast<int>(written.size())).imprime(out);
}

/// The pages as the window shows them, their columns laid out, with a form feed between two.
void write_pages(std::fstream& out, const lines& text) {
    constexpr std::string_view font = "@f@S14 ";
    lines shown = has_markup(text) ? text : for_screen(text);
    OFD_afficheur_filtre_affichage filter(shown.data(), static_cast<int>(shown.size()));
    for (int page = 0; page <= filter.nb_pages(); ++page) {
        if (page > 0) out << '\f';
        std::istringstream rows(filter.visu_page(page));
        for (std::string row; std::getline(rows, row);)
            out << (row.starts_with(font) ? row.substr(font.size()) : row) << '\n';
    }
}

struct export_row {
    document kind;
    const char* option;
    writer write;
};

// clang-format off
constexpr export_row exports[] = {
    {document::pdf,        "--pdf", write_printed<&print_filter::imprime_pdf, document_text::for_pdf>},
    {document::postscript, "--ps",  write_printed<&print_filter::imprime_postscript, document_text::for_postscript>},
    {document::text,       "--txt", write_text},
    {document::pages,      "--pages", write_pages},
};
// clang-format on
constexpr std::size_t export_count = static_cast<std::size_t>(document::pages) + 1;

consteval bool one_row_each() {
    for (std::size_t row = 0; row < std::size(exports); ++row)
        if (exports[row].kind != static_cast<document>(row)) return false;
    return std::size(exports) == export_count;
}
static_assert(one_row_each());

struct options {
    std::string file, viewer = "xpdf";
    /// Where each document goes, in the order of the table; nothing for one that is not asked for.
    std::array<std::optional<std::string>, export_count> paths;
    bool english = false;

    bool exports_any() const {
        return std::ranges::any_of(paths, [](const auto& path) { return path.has_value(); });
    }
};

/// Takes any text but the empty one, which names no file.
const CLI::Validator not_empty(
    [](const std::string& text) { return text.empty() ? "le nom est vide" : ""; }, "");

void describe(CLI::App& app, options& asked) {
    app.set_help_flag("--help", "affiche cette aide");
    app.add_option("FICHIER", asked.file, "le texte \xC3\xA0 montrer")
        ->required()
        ->check(not_empty);
    app.add_flag("--english", asked.english, "la fen\xC3\xAAtre en anglais");
    app.add_option("--viewer", asked.viewer, "le lecteur de PDF de la fen\xC3\xAAtre (xpdf)")
        ->type_name("COMMANDE")
        ->check(not_empty);
    for (std::size_t row = 0; row < export_count; ++row)
        app.add_option(exports[row].option, asked.paths[row],
                       "\xC3\xA9"
                       "crit ce document, sans fen\xC3\xAAtre")
            ->type_name("SORTIE")
            ->check(not_empty);
}

int refuse(const std::string& doing, const std::string& path, int error) {
    std::cerr << "lecteur: " << doing << " " << path << ": " << std::strerror(error) << '\n';
    return 1;
}

int refuse_output() {
    std::cerr << "lecteur: la sortie standard ne prend rien\n";
    return 1;
}

/// Where a document is written until it is whole: beside its place, unless that is no file (a pipe,
/// a device).
std::string place_of_unfinished(const std::filesystem::path& path) {
    std::error_code none;
    const auto there = std::filesystem::status(path, none);
    const bool replaced = !std::filesystem::exists(there) ||
                          (is_regular_file(there) && access(path.c_str(), W_OK) == 0);
    return replaced ? path.string() + ".part" : path.string();
}

/// Writes one document; one that cannot be written leaves what was there. Returns the program's
/// status so far.
int write_document(writer write, const std::string& path, const lines& text) {
    std::error_code none;
    std::filesystem::path goal = std::filesystem::weakly_canonical(path, none);
    if (none) goal = path;
    const std::string unfinished = place_of_unfinished(goal);
    std::fstream out(unfinished, std::ios::out);
    if (out) write(out, text);
    out.close();
    if (out && (goal == unfinished || std::rename(unfinished.c_str(), goal.c_str()) == 0)) return 0;
    const int error = errno;
    if (goal != unfinished) std::filesystem::remove(unfinished, none);
    return refuse(
        "ne peut pas \xC3\xA9"
        "crire",
        path, error);
}

/// Writes what is asked for, up to the first document that cannot be written.
int write_documents(const options& asked, const lines& text) {
    int status = 0;
    for (std::size_t row = 0; row < export_count && status == 0; ++row)
        if (asked.paths[row]) status = write_document(exports[row].write, *asked.paths[row], text);
    return status;
}

/// The window's buttons write what --pdf and --txt do: the filters that its activation has made get
/// the documents' lines in place of the screen's.
struct exported_lines {
    OFD_afficheur& viewer;
    lines printed, text;

    static void give(void* self) {
        auto& given = *static_cast<exported_lines*>(self);
        given.viewer.print_filter->lines = given.printed.data();
        given.viewer.print_filter->count = static_cast<int>(given.printed.size());
        given.viewer.text_filter->lines = given.text.data();
        given.viewer.text_filter->count = static_cast<int>(given.text.size());
    }
};

int show(const options& asked, const lines& text) {
    // The toolkit ends a program that has no display, with its own words: better say it in ours.
    Display* const display = XOpenDisplay(nullptr);
    if (!display) {
        std::cerr << "lecteur: pas d'\xC3\xA9"
                     "cran; --pdf, --ps, --txt et --pages s'en passent\n";
        return 1;
    }
    XCloseDisplay(display);
    lines screen = has_markup(text) ? text : for_screen(text);
    OFD_afficheur viewer(nullptr, asked.english);
    exported_lines exported{viewer, for_print(text, document_text::for_pdf), text};
    Fl::add_timeout(0, exported_lines::give, &exported);
    viewer.activation(screen.data(), static_cast<int>(screen.size()), asked.file, asked.viewer);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN);  // A file that may not grow fails whoever writes it.
    options asked;
    CLI::App app(
        "Montre un texte page par page, ou l'\xC3\xA9"
        "crit en PDF, PostScript ou texte",
        "lecteur");
    describe(app, asked);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help() << std::flush;
        return std::cout ? 0 : refuse_output();
    } catch (const CLI::ParseError& error) {
        std::cerr << "lecteur: " << error.what() << '\n';
        return 2;
    }
    std::optional<lines> text = read_lines(asked.file);
    if (!text) return refuse("ne peut pas lire", asked.file, errno);
    return asked.exports_any() ? write_documents(asked, *text) : show(asked, *text);
}
