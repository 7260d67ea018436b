#include "viewer/print_filter.h"

#include <string_view>

#include "strings/number_formatting.h"
#include "viewer/flushed_line.h"
#include "viewer/print_layout.h"

namespace {

using print_layout::point;

constexpr std::string_view block_indent = "    ";
constexpr std::string_view last_block_indent = "      ";  // two spaces more, at the document's end

struct pdf_pen {
    std::fstream& out;
    std::string_view indent = block_indent;

    void rule(point from, point to) const {
        write_flushed_line(out, {indent, print_layout::coordinates(from), " m"});
        write_flushed_line(out, {indent, print_layout::coordinates(to), " l"});
        write_flushed_line(out, {"       S"});
    }

    void text(point at, const std::string& shown) const {
        write_flushed_line(out, {"   BT"});
        write_flushed_line(out, {"     /F1 7 Tf"});
        write_flushed_line(out, {"     ", print_layout::coordinates(at), " Td"});
        write_flushed_line(out, {"(", shown, ") Tj"});
        write_flushed_line(out, {"   ET"});
    }
};

constexpr std::string_view catalogue[] = {
    "%PDF-1.4",
    "1 0 obj",
    "  << /Type /Catalog",
    "     /Outlines 2 0 R",
    "     /Pages 3 0 R",
    "  >>",
    "endobj",
    "",
    "2 0 obj",
    "  << /Type /Outlines",
    "     /Count 0",
    "  >>",
    "endobj",
    "",
    "3 0 obj",
    "  << /Type /Pages",
    "     /Kids [",
};

constexpr std::string_view fonts[] = {
    "  >>",
    "endobj",
    "",
    "4 0 obj",
    "   [/PDF /Text]",
    "endobj",
    "",
    "5 0 obj",
    "  << /Type /Font",
    "     /Subtype /Type1",
    "     /Name /F1",
    "     /BaseFont /Times-Roman",
    "     /Encoding /WinAnsiEncoding",
    "  >>",
    "endobj",
    "",
};

constexpr std::string_view page_head[] = {
    "  << /Type /Page",
    "     /Parent 3 0 R",
    "     /MediaBox [0 0 612 792]",
};

constexpr std::string_view page_tail[] = {
    "     /Resources << /ProcSet 4 0 R",
    "                   /Font << /F1 5 0 R >>",
    "                >>",
    "  >>",
    "endobj",
    "",
};

// The length does not describe any stream: readers look for "endstream".
constexpr std::string_view stream_head[] = {"  << /Length 73 >>", "stream"};
constexpr std::string_view stream_tail[] = {"endstream", "endobj", ""};

// The same for every document: nothing is measured, and only the first offset is right.
constexpr std::string_view trailer[] = {
    "xref",
    "0 8",
    "0000000000 65535 f",
    "0000000009 00000 n",
    "0000000074 00000 n",
    "0000000120 00000 n",
    "0000000179 00000 n",
    "0000000364 00000 n",
    "0000000466 00000 n",
    "0000000496 00000 n",
    "",
    "trailer",
    "  << /Size 8",
    "     /Root 1 0 R",
    "  >>",
    "startxref",
    "625",
    "%%EOF",
};

/// The object number of a page, 0 for the first; that of its content is the next number.
long page_object(long page) { return 10 + 2 * page; }

/// The page's object and the head of its content.
void open_page(std::fstream& out, long page) {
    const std::string content = long2S(page_object(page) + 1);
    write_flushed_line(out, {long2S(page_object(page)), " 0 obj"});
    write_flushed_lines(out, page_head);
    write_flushed_line(out, {"     /Contents ", content, " 0 R"});
    write_flushed_lines(out, page_tail);
    write_flushed_line(out, {content, " 0 obj"});
    write_flushed_lines(out, stream_head);
}

/// The rules of the open block and the tail of the page's content.
void close_page(const OFD_afficheur_filtre_impression& filter, std::fstream& out,
                std::string_view indent) {
    print_layout::draw_column_rules(filter, filter.top, pdf_pen{out, indent});
    write_flushed_lines(out, stream_tail);
}

/// The list of pages in the pages' object: the first at the start of its line, the others and the
/// bracket after nine spaces.
void write_kids(std::fstream& out, long pages) {
    std::string_view indent;
    for (long page = 0; page < pages; ++page) {
        write_flushed_line(out, {indent, long2S(page_object(page)), " 0 R"});
        indent = "         ";
    }
    write_flushed_line(out, {indent, "]"});
    write_flushed_line(out, {"     /Count ", long2S(pages)});
}

}  // namespace

OFD_afficheur_filtre_impression::OFD_afficheur_filtre_impression(std::string* lines, int count)
    : lines(lines), count(count) {}

int OFD_afficheur_filtre_impression::typeligne(const std::string& line) {
    return line_markup::type_of(line);
}

void OFD_afficheur_filtre_impression::imprime_pdf(std::fstream& out) {
    using filter = OFD_afficheur_filtre_impression;
    print_layout::print(
        *this, out, {&filter::begin_pdf, &filter::pdf, &filter::next_page_pdf, &filter::end_pdf});
}

void OFD_afficheur_filtre_impression::begin_pdf(std::fstream& out) {
    print_layout::start_page(*this);
    page_index = 0;
    write_flushed_lines(out, catalogue);
    write_kids(out, line_markup::last_page(lines, count) + 1);
    write_flushed_lines(out, fonts);
    open_page(out, page_index);
}

void OFD_afficheur_filtre_impression::pdf(std::fstream& out, const std::string& line) {
    print_layout::draw_line(*this, top, pdf_pen{out}, line);
}

void OFD_afficheur_filtre_impression::next_page_pdf(std::fstream& out, int) {
    close_page(*this, out, block_indent);
    page_index = print_layout::after(page_index);
    open_page(out, page_index);
    print_layout::start_page(*this);
}

void OFD_afficheur_filtre_impression::end_pdf(std::fstream& out) {
    close_page(*this, out, last_block_indent);
    write_flushed_lines(out, trailer);
}
