// The viewer's documents, of any lines: each filter's pages, rules and cells against the lines.
#include <algorithm>
#include <ios>
#include <sstream>
#include <vector>

#include "tests/fuzz/fuzz_input.h"
#include "viewer/display_filter.h"
#include "viewer/print_filter.h"
#include "viewer/text_filter.h"

namespace {

using text_lines = std::vector<std::string>;

/// The lines of `text`; what follows its last newline is one, too.
text_lines lines_of(const std::string& text) {
    text_lines lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

/// The lines that `write` writes, kept from the disk.
template <class Write>
text_lines written(Write write) {
    std::stringbuf document;
    std::fstream out;
    out.std::ios::rdbuf(&document);
    write(out);
    law(document.view().empty() || document.view().ends_with('\n'), "the last line ends");
    return lines_of(document.str());
}

/// How many lines are counted to a page.
long counted(const text_lines& lines) {
    return std::ranges::count_if(lines, [](const std::string& line) {
        return !line.starts_with("#C") && !line.starts_with("#P");
    });
}

void show(text_lines& lines) {
    const int count = static_cast<int>(lines.size());
    OFD_afficheur_filtre_affichage turned(lines.data(), count), straight(lines.data(), count);
    std::size_t next = 0;
    for (int page = 0; page <= turned.nb_pages(); ++page) {
        const std::size_t first = next;
        for (const std::string& shown : lines_of(turned.visu_page(page)))
            law(shown == straight.visu_ligne(lines[next++]), "a page holds its lines in order");
        const long on_page = counted(
            {lines.begin() + static_cast<long>(first), lines.begin() + static_cast<long>(next)});
        law(page == turned.nb_pages() ? on_page <= 77 : on_page == 77, "a page is full");
    }
    law(next == lines.size(), "the pages hold all lines");
    law(turned.visu_page(turned.nb_pages() + 1).empty(), "no page after the last");
}

/// A document whose pages end with the line `page_end`, and its lines of text with `cell_end`.
void check_print(const text_lines& document, int pages, const std::string& page_end,
                 const std::string& cell_end) {
    law(std::ranges::count(document, page_end) == pages, "pages break as on screen");
    for (const std::string& line : document) {
        if (!line.ends_with(cell_end)) continue;
        const std::size_t text = line.find('(') + 1, end = line.size() - cell_end.size();
        law(line.find_first_of("()", text) == end, "a cell has no parenthesis");
        law(line.substr(text, end - text) != " ", "no cell is one space");
    }
}

void print(text_lines& lines) {
    const int count = static_cast<int>(lines.size());
    const int pages = OFD_afficheur_filtre_affichage(lines.data(), count).nb_pages() + 1;
    OFD_afficheur_filtre_impression filter(lines.data(), count);
    const auto pdf = [&] { return written([&](std::fstream& out) { filter.imprime_pdf(out); }); };
    check_print(pdf(), pages, "endstream", ") Tj");
    check_print(written([&](std::fstream& out) { filter.imprime_postscript(out); }), pages,
                "showpage", ") show");
    law(pdf() == pdf(), "only the columns are kept");
}

void save(text_lines& lines) {
    OFD_afficheur_filtre_texte filter(lines.data(), static_cast<int>(lines.size()));
    const text_lines text = written([&](std::fstream& out) { filter.imprime(out); });
    law(text.size() == lines.size(), "a line for each line");
    for (std::size_t line = 0; line < lines.size(); ++line)
        law(text[line] == (filter.typeligne(lines[line]) == 0 ? lines[line] : std::string(55, '-')),
            "text is copied, markup is dashes");
}

/// A line of any type: a few bytes, over and over, so that a short input holds many cells and
/// columns. No newline, by which the documents are read.
std::string any_line(fuzz_input& input) {
    const char* const starts[] = {"", "#C", "#P", "#T"};
    std::string line = starts[static_cast<unsigned char>(input.byte()) % 4];
    const int times = static_cast<unsigned char>(input.byte()) % 20;
    const std::string piece = input.text(8);
    for (int time = 0; time <= times; ++time) line += piece;
    std::ranges::replace(line, '\n', ' ');
    return line;
}

/// A few lines, over and over, so that a short input fills pages.
text_lines any_lines(fuzz_input& input) {
    const int times = static_cast<unsigned char>(input.byte()) % 64;
    text_lines once, lines;
    while (!input.empty()) once.push_back(any_line(input));
    for (int time = 0; time <= times; ++time) lines.insert(lines.end(), once.begin(), once.end());
    return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz_input input(data, size);
    text_lines lines = any_lines(input);
    show(lines);
    print(lines);
    save(lines);
    return 0;
}
