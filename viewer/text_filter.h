// The plain text filter of the paged viewer.
//
// The markup of the lines is described in line_markup.h. The filter keeps a pointer to the caller's
// lines and copies none of them: they must outlive it.
#pragma once
#include <fstream>
#include <string>

/// Writes lines as they are, with a row of 55 dashes for each line of markup. No pages, no columns.
///
///     std::string lines[] = {"#C 10 5 ", "ab#cdefgh"};
///     std::fstream out("tmp.txt", std::ios::out);
///     OFD_afficheur_filtre_texte(lines, 2).imprime(out);
class OFD_afficheur_filtre_texte {
public:
    int count;           ///< Below 1: no line.
    std::string* lines;  ///< The caller's array of `count` lines.

    /// Keeps `lines`, which may be null when `count` is below 1.
    OFD_afficheur_filtre_texte(std::string* lines, int count);

    /// 0 for text, 1 for a #C line, 2 for #P, 3 for #T: see line_markup::type_of.
    int typeligne(const std::string& line);

    /// Writes all lines, in order; nothing when there is none. A failing stream is not reported.
    void imprime(std::fstream& out);

    /// Writes a line of text as it is, "#" included, or the dashes for a #C, #P or #T line; then a
    /// newline, and flushes.
    void imprime_ligne(std::fstream& out, const std::string& line);
};
