// Shows a text file page by page, or exports it without a display:
//     lecteur FICHIER [--english] [--viewer COMMANDE]
//     lecteur FICHIER [--pdf SORTIE] [--ps SORTIE] [--txt SORTIE]
#include <CLI/CLI.hpp>
#include <X11/Xlib.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

#include "examples/lecteur/document.h"
#include "viewer/viewer_window.h"

namespace {

struct options {
    std::string file, viewer = "xpdf", pdf, ps, txt;
    bool english = false;
    bool exports() const { return !pdf.empty() || !ps.empty() || !txt.empty(); }
};

void describe(CLI::App& app, options& asked) {
    app.set_help_flag("--help", "affiche cette aide");
    app.add_option("FICHIER", asked.file, "le texte \xC3\xA0 montrer")->required();
    app.add_flag("--english", asked.english, "la fen\xC3\xAAtre en anglais");
    app.add_option("--viewer", asked.viewer, "le lecteur de PDF de la fen\xC3\xAAtre (xpdf)")
        ->type_name("COMMANDE");
    const struct {
        const char* name;
        std::string& kept;
    } documents[] = {{"--pdf", asked.pdf}, {"--ps", asked.ps}, {"--txt", asked.txt}};
    for (const auto& [name, kept] : documents)
        app.add_option(name, kept,
                       "\xC3\xA9"
                       "crit ce document, sans fen\xC3\xAAtre")
            ->type_name("SORTIE");
}

int refuse(const std::string& doing, const std::string& path) {
    std::cerr << "lecteur: " << doing << " " << path << ": " << std::strerror(errno) << '\n';
    return 1;
}

/// Writes one document; true when no path is asked for.
template <class Print>
bool write(const std::string& path, Print print) {
    if (path.empty()) return true;
    std::fstream out(path, std::ios::out);
    if (out) print(out);
    out.close();
    if (!out)
        refuse(
            "ne peut pas \xC3\xA9"
            "crire",
            path);
    return static_cast<bool>(out);
}

int write_documents(const options& asked, lines& text) {
    lines printed = has_markup(text) ? text : for_print(text);
    const auto print = [&](auto document) {
        return [&printed, document](std::fstream& out) {
            OFD_afficheur_filtre_impression filter(printed.data(),
                                                   static_cast<int>(printed.size()));
            (filter.*document)(out);
        };
    };
    const bool written =
        write(asked.pdf, print(&OFD_afficheur_filtre_impression::imprime_pdf)) &&
        write(asked.ps, print(&OFD_afficheur_filtre_impression::imprime_postscript)) &&
        write(asked.txt, [&](std::fstream& out) {
            OFD_afficheur_filtre_texte(text.data(), static_cast<int>(text.size())).imprime(out);
        });
    return written ? 0 : 1;
}

int show(const options& asked, const lines& text) {
    // The toolkit ends a program that has no display, with its own words: better say it in ours.
    Display* const display = XOpenDisplay(nullptr);
    if (!display) {
        std::cerr << "lecteur: pas d'\xC3\xA9"
                     "cran; --pdf, --ps et --txt s'en passent\n";
        return 1;
    }
    XCloseDisplay(display);
    lines screen = has_markup(text) ? text : for_screen(text);
    OFD_afficheur viewer(nullptr, asked.english);
    viewer.activation(screen.data(), static_cast<int>(screen.size()), asked.file, asked.viewer);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    options asked;
    CLI::App app(
        "Montre un texte page par page, ou l'\xC3\xA9"
        "crit en PDF, PostScript ou texte",
        "lecteur");
    describe(app, asked);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return 0;
    } catch (const CLI::ParseError& error) {
        std::cerr << "lecteur: " << error.what() << '\n';
        return 2;
    }
    std::optional<lines> text = read_lines(asked.file);
    if (!text) return refuse("ne peut pas lire", asked.file);
    return asked.exports() ? write_documents(asked, *text) : show(asked, *text);
}
