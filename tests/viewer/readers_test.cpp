// The exports of the three-page table, read back by programs that people use.
#include <gtest/gtest.h>

#include <array>

#include "tests/support/programs.h"
#include "tests/viewer/documents.h"

namespace {

/// A folder with the table's two documents in it, gone with the object.
class Readers : public testing::Test {
    leaves_nothing nothing_;

protected:
    Readers() {
        text_lines lines = parts_of(bytes_of(QUORIN_GOLDEN "/table.lines"), "\n");
        OFD_afficheur_filtre_impression filter(lines.data(), count_of(lines));
        std::fstream pdf(path("table.pdf"), std::ios::out),
            postscript(path("table.ps"), std::ios::out);
        filter.imprime_pdf(pdf);
        filter.columns = {};
        filter.imprime_postscript(postscript);
    }

    std::string path(const std::string& name) const { return folder_ / name; }

    /// What a reader prints. It must say that all went well, or that it repaired the document.
    std::string read(std::vector<std::string> command, int status = 0) const {
        const outcome result = run_program(command);
        EXPECT_EQ(result.status, status) << command[0] << '\n' << result.out << result.err;
        return result.out;
    }

    /// Files that a reader made, "NAME1.END", "NAME2.END"...
    std::size_t numbered(const std::string& name, const std::string& end) const {
        std::size_t made = 0;
        while (std::filesystem::exists(path(name + std::to_string(made + 1) + end))) ++made;
        return made;
    }

private:
    temporary_folder folder_;
};

/// Whether the three pages of text are the table's:
/// cells on the page where they belong, and only there.
void expect_table(const std::array<std::string, 3>& pages) {
    const struct {
        std::string text;
        std::size_t page;
    } cells[] = {{"Inventaire de la cellule ZK4 tiroirs et presse", 0},
                 {"remarque", 0},
                 {"piece 1", 0},
                 {"piece 40", 0},
                 {"280", 0},
                 {"rangee 5, tiroir 0", 0},
                 {"vis \xC3\xA9paul\xC3\xA9"
                  "e",
                  0},
                 {"lot 30", 0},
                 {"valeur un peu trop longue pour", 0},
                 {"ligne 1", 1},
                 {"ligne 75", 1},
                 {"deux", 1},
                 {"trois", 1},
                 {"seule", 1},
                 {"fin", 2},
                 {"table", 2}};
    for (const auto& [text, page] : cells)
        for (std::size_t each = 0; each < 3; ++each)
            EXPECT_EQ(pages[each].find(text) != std::string::npos, each == page)
                << text << " on page " << each + 1;
    for (const std::string& each : pages)
        EXPECT_EQ(each.find("sa colonne"), std::string::npos) << "a cell is not cut";
}

TEST_F(Readers, PopplerReadsThePdf) {
    EXPECT_NE(read({"pdfinfo", path("table.pdf")}).find("\nPages:           3\n"),
              std::string::npos);
    std::array<std::string, 3> pages;
    for (std::size_t page = 0; page < 3; ++page) {
        const std::string number = std::to_string(page + 1);
        pages[page] = read({"pdftotext", "-enc", "UTF-8", "-f", number, "-l", number, "-layout",
                            path("table.pdf"), "-"});
    }
    expect_table(pages);
}

TEST_F(Readers, MupdfReadsThePdf) {
    EXPECT_NE(read({"mutool", "info", path("table.pdf")}).find("\nPages: 3\n"), std::string::npos);
    std::array<std::string, 3> pages;
    for (std::size_t page = 0; page < 3; ++page)
        pages[page] = read(
            {"mutool", "draw", "-q", "-F", "txt", path("table.pdf"), std::to_string(page + 1)});
    expect_table(pages);
}

TEST_F(Readers, QpdfRepairsThePdf) {
    constexpr int with_warnings = 3;
    EXPECT_EQ(read({"qpdf", "--show-npages", path("table.pdf")}, with_warnings), "3\n");
    const std::string checked = read({"qpdf", "--check", path("table.pdf")}, with_warnings);
    EXPECT_NE(checked.find("PDF Version: 1.4"), std::string::npos) << checked;
    read({"qpdf", path("table.pdf"), path("repaired.pdf")}, with_warnings);
    read({"qpdf", "--check", path("repaired.pdf")});
}

TEST_F(Readers, GhostscriptReadsBoth) {
    for (const std::string name : {"table.pdf", "table.ps"}) {
        for (const std::string device : {"txtwrite", "pnggray"})
            read({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-r36", "-sDEVICE=" + device,
                  "-sOutputFile=" + path(name + "%d." + device), path(name)});
        EXPECT_EQ(numbered(name, ".pnggray"), 3u) << name;
        ASSERT_EQ(numbered(name, ".txtwrite"), 3u) << name;
        std::array<std::string, 3> pages;
        for (std::size_t page = 0; page < 3; ++page)
            pages[page] = bytes_of(path(name + std::to_string(page + 1) + ".txtwrite"));
        if (name == "table.ps")  // its font has the standard encoding, whose E9 is another letter
            pages[0].replace(pages[0].find("vis "), 14,
                             "vis \xC3\xA9paul\xC3\xA9"
                             "e");
        expect_table(pages);
    }
}

TEST_F(Readers, Ps2pdfConvertsThePostscript) {
    read({"ps2pdf", path("table.ps"), path("converted.pdf")});
    EXPECT_NE(read({"pdfinfo", path("converted.pdf")}).find("\nPages:           3\n"),
              std::string::npos);
}

}  // namespace
