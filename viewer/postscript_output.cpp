#include "viewer/print_filter.h"

#include <string_view>

#include "strings/number_formatting.h"
#include "viewer/flushed_line.h"
#include "viewer/print_layout.h"

namespace {

using print_layout::point;

struct postscript_pen {
    std::fstream& out;

    void rule(point from, point to) const {
        write_flushed_line(out, {"newpath ", print_layout::coordinates(from), " moveto ",
                                 print_layout::coordinates(to), " lineto stroke "});
    }

    void text(point at, const std::string& shown) const {
        write_flushed_line(out, {print_layout::coordinates(at), " moveto (", shown, ") show"});
    }
};

// Says one page, of US Letter on A4 paper, whatever the document: readers count the "showpage"s.
constexpr std::string_view head[] = {
    "%!PS-Adobe-2.0",           "%%Creator: folvanix",
    "%%Title: tmp.ps",          "%%Pages: 1",
    "%%PageOrder: Ascend",      "%%BoundingBox: 0 0 612 792",
    "%%DocumentPaperSizes: a4", "%%EndComments",
};

constexpr std::string_view page_head[] = {"a4", "/Times-Roman findfont", "7 scalefont", "setfont"};

void close_page(const OFD_afficheur_filtre_impression& filter, std::fstream& out) {
    print_layout::draw_column_rules(filter, filter.page_height, postscript_pen{out});
    write_flushed_line(out, {"showpage"});
}

}  // namespace

void OFD_afficheur_filtre_impression::imprime_postscript(std::fstream& out) {
    using filter = OFD_afficheur_filtre_impression;
    print_layout::print(*this, out,
                        {&filter::begin_postscript, &filter::postscript,
                         &filter::next_page_postscript, &filter::end_postscript});
}

void OFD_afficheur_filtre_impression::begin_postscript(std::fstream& out) {
    print_layout::start_page(*this);
    write_flushed_lines(out, head);
    write_flushed_lines(out, page_head);
}

void OFD_afficheur_filtre_impression::postscript(std::fstream& out, const std::string& line) {
    print_layout::draw_line(*this, page_height, postscript_pen{out}, line);
}

void OFD_afficheur_filtre_impression::next_page_postscript(std::fstream& out, int page) {
    close_page(*this, out);
    const std::string number = long2S(page);
    write_flushed_line(out, {"%%page : ", number, " ", number});
    write_flushed_lines(out, page_head);
    print_layout::start_page(*this);
}

void OFD_afficheur_filtre_impression::end_postscript(std::fstream& out) { close_page(*this, out); }
