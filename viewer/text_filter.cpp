#include "viewer/text_filter.h"

#include <string_view>

#include "viewer/flushed_line.h"
#include "viewer/line_markup.h"

namespace {

constexpr std::string_view dashes = "-------------------------------------------------------";
static_assert(dashes.size() == 55);

}  // namespace

OFD_afficheur_filtre_texte::OFD_afficheur_filtre_texte(std::string* lines, int count)
    : count(count), lines(lines) {}

int OFD_afficheur_filtre_texte::typeligne(const std::string& line) {
    return line_markup::type_of(line);
}

void OFD_afficheur_filtre_texte::imprime(std::fstream& out) {
    for (int index = 0; index < count; ++index) imprime_ligne(out, lines[index]);
}

void OFD_afficheur_filtre_texte::imprime_ligne(std::fstream& out, const std::string& line) {
    const bool is_text = line_markup::type_of(line) == line_markup::text_line;
    write_flushed_line(out, {is_text ? std::string_view(line) : dashes});
}
