// What the tests of the viewer's filters share:
// documents as lists of lines, and what a filter wrote.
#pragma once
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "viewer/display_filter.h"
#include "viewer/print_filter.h"
#include "viewer/text_filter.h"

using text_lines = std::vector<std::string>;

/// What `write` puts in a file.
inline std::string written(const std::function<void(std::fstream&)>& write) {
    const temporary_folder folder;
    std::fstream out(folder / "document", std::ios::out);
    write(out);
    out.close();
    return bytes_of(folder / "document");
}

inline int count_of(const text_lines& lines) { return static_cast<int>(lines.size()); }

inline std::string as_pdf(text_lines lines) {
    OFD_afficheur_filtre_impression filter(lines.data(), count_of(lines));
    return written([&](std::fstream& out) { filter.imprime_pdf(out); });
}

inline std::string as_postscript(text_lines lines) {
    OFD_afficheur_filtre_impression filter(lines.data(), count_of(lines));
    return written([&](std::fstream& out) { filter.imprime_postscript(out); });
}

inline std::string as_text(text_lines lines) {
    OFD_afficheur_filtre_texte filter(lines.data(), count_of(lines));
    return written([&](std::fstream& out) { filter.imprime(out); });
}

inline int pages_of(text_lines lines) {
    return OFD_afficheur_filtre_affichage(lines.data(), count_of(lines)).nb_pages();
}

/// The screen's pages, turned one after the other by one filter.
inline std::vector<std::string> screen_pages(text_lines lines) {
    OFD_afficheur_filtre_affichage filter(lines.data(), count_of(lines));
    std::vector<std::string> pages;
    for (int page = 0; page <= filter.nb_pages(); ++page) pages.push_back(filter.visu_page(page));
    return pages;
}

/// `count` copies of `line`.
inline text_lines copies(int count, const std::string& line) {
    return text_lines(static_cast<std::size_t>(count), line);
}

inline text_lines joined(std::initializer_list<text_lines> parts) {
    text_lines all;
    for (const text_lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// The parts of `text` that `end` ends; what follows the last `end` is left out.
inline std::vector<std::string> parts_of(const std::string& text, const std::string& end) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t at; (at = text.find(end, start)) != std::string::npos; start = at + end.size())
        parts.push_back(text.substr(start, at - start));
    return parts;
}

/// The content of each page of a PDF document.
inline text_lines streams(const std::string& document) {
    text_lines all = parts_of(document, "endstream\n");
    for (std::string& each : all) each.erase(0, each.find("\nstream\n") + 8);
    return all;
}

/// A file of the golden folder, which this library did not write: see golden/make.py.
inline std::string golden(const std::string& name) {
    const std::string path = QUORIN_GOLDEN "/" + name;
    EXPECT_TRUE(std::filesystem::exists(path)) << path;
    return bytes_of(path);
}
