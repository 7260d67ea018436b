#include "lesson/toml_document.h"

#include <toml++/toml.h>

#include <algorithm>
#include <utility>

#include "lesson/toml_depth.h"
#include "recording/recorded_text.h"

namespace {

/// As deep as exercises go is 4: a text in a list in one of the tables of a list.
constexpr int deepest = 6;

struct syntax_row {
    /// What the library's English words hold; the first that fits counts.
    std::string_view words;
    const char* french;
};

// clang-format off
constexpr syntax_row syntax_rows[] = {
    {"redefine existing table",   "cette table est déjà donnée plus haut"},
    {"redefine existing",         "cette clé est déjà donnée plus haut"},
    {"cannot insert",             "cette table est déjà donnée plus haut"},
    {"end-of-file",               "le fichier finit trop tôt: il manque une fin de texte, un crochet ou une valeur"},
    {"saw EOF",                   "le fichier finit trop tôt: il manque une fin de texte, un crochet ou une valeur"},
    {"nested value depth",        "trop de valeurs les unes dans les autres"},
    {"surrogates",                "ce caractère n'existe pas"},
    {"U+10FFFF",                  "ce caractère n'existe pas"},
    {"control character",         "caractère de contrôle, ou texte de plusieurs lignes sans trois guillemets"},
    {"escape sequence",           "\\ annonce une lettre que TOML n'a pas (\\\\ pour une barre)"},
    {"line-ending backslashes",   "\\ annonce une lettre que TOML n'a pas (\\\\ pour une barre)"},
    {"representable in 64 bits",  "ce nombre dépasse 64 bits"},
    {"leading zeroes",            "un nombre ne commence pas par un zéro de trop"},
    {"expected '='",              "= est attendu après la clé"},
    {"comma",                     "il manque une virgule ou un crochet, ou il y en a trop"},
    {"contiguous",                "[[ et ]] s'écrivent sans espace entre les crochets"},
    {"value-terminator",          "la valeur devrait finir là"},
    {"comment or whitespace",     "la ligne devrait finir là"},
    {"as a value",                "ce n'est pas une valeur: un texte s'écrit entre guillemets"},
    {"value",                     "une valeur est attendue: un texte s'écrit entre guillemets"},
    {"digit",                     "ce nombre est mal écrit"},
    {"key",                       "une clé ou une table est attendue"},
};
// clang-format on

exercise_problem problem_of(const toml::parse_error& error) {
    const auto fits = [&](const syntax_row& row) {
        return error.description().find(row.words) != std::string_view::npos;
    };
    const auto row = std::ranges::find_if(syntax_rows, fits);
    const char* const why = row == std::end(syntax_rows) ? "faute de syntaxe" : row->french;
    const toml::source_position at = error.source().begin;
    return {std::max(static_cast<int>(at.line), 1),
            "TOML, colonne " + std::to_string(at.column) + ": " + why};
}

/// Nodes that no line of their own made have that of what holds them.
int line_of(const toml::source_region& place, int outer) {
    return place.begin.line > 0 ? static_cast<int>(place.begin.line) : outer;
}

toml_value value_of(const toml::node& node, int outer, int depth);

toml_table table_of(const toml::table& table, int line, int depth) {
    toml_table entries;
    if (depth == deepest) return entries;
    for (const auto& [key, node] : table) {
        const int at = line_of(key.source(), line);
        entries.push_back({std::string(key.str()), value_of(node, at, depth + 1), at});
    }
    return entries;
}

toml_list list_of(const toml::array& array, int line, int depth) {
    toml_list values;
    if (depth == deepest) return values;
    for (const toml::node& node : array) values.push_back(value_of(node, line, depth + 1));
    return values;
}

toml_value value_of(const toml::node& node, int outer, int depth) {
    const int line = line_of(node.source(), outer);
    if (const auto* text = node.as_string()) return {text->get(), line};
    if (const auto* whole = node.as_integer()) return {whole->get(), line};
    if (const auto* real = node.as_floating_point()) return {real->get(), line};
    if (const auto* truth = node.as_boolean()) return {truth->get(), line};
    if (const auto* table = node.as_table()) return {table_of(*table, line, depth), line};
    if (const auto* array = node.as_array()) return {list_of(*array, line, depth), line};
    return {toml_moment(), line};
}

/// The line of the first byte that is no UTF-8; 0 when there is none.
int line_that_is_no_utf8(std::string_view bytes) {
    int line = 1;
    while (!bytes.empty()) {
        const std::size_t length = utf8_length(bytes);
        if (length == 0) return line;
        line += bytes[0] == '\n';
        bytes.remove_prefix(length);
    }
    return 0;
}

}  // namespace

std::variant<toml_table, exercise_problem> read_toml(std::string_view bytes) {
    if (const int line = line_that_is_no_utf8(bytes); line > 0)
        return exercise_problem{line, "ce n'est pas de l'UTF-8"};
    if (const int line = line_too_deep(bytes); line > 0)
        return exercise_problem{line, "trop de tables les unes dans les autres"};
    try {
        return table_of(toml::parse(bytes), 1, 0);
    } catch (const toml::parse_error& error) {
        return problem_of(error);
    }
}
