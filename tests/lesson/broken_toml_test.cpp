// Files that are no TOML, and any bytes at all.
#include <random>

#include "tests/lesson/broken_exercises.h"

namespace {

const std::string too_early =
    "le fichier finit trop tôt: il manque une fin de texte, un crochet ou une valeur";

TEST(BrokenToml, AFaultOfSyntaxIsOneLine) {
    const std::string again = "cette clé est déjà donnée plus haut";
    const std::string table_again = "cette table est déjà donnée plus haut";
    const std::string value = "une valeur est attendue: un texte s'écrit entre guillemets";
    expect_told({
        {"format\n", {"1: TOML, colonne 7: = est attendu après la clé"}},
        {whole + "points = \n", {"7: TOML, colonne 10: " + value}},
        {whole + "points = deux\n", {"7: TOML, colonne 10: " + value}},
        {whole + "points = 1\npoints = 2\n", {"8: TOML, colonne 10: " + again}},
        {whole + "[station]\n[station]\n", {"8: TOML, colonne 1: " + table_again}},
        {whole + "[station]\ngraine.x = 1\n[station.graine]\n",
         {"9: TOML, colonne 1: " + table_again}},
        {begun + "but = []\n" + goal, {"5: TOML, colonne 1: " + again}},
        {begun + "enonce_en = \"E\nF\"\n",
         {"4: TOML, colonne 15: un texte de plusieurs lignes s'écrit entre trois guillemets"}},
        {begun + "enonce_en = \"\"\"E\n\n", {"5: TOML, colonne 2: " + too_early}},
        {begun + "titre_en = \"a\\q\"\n",
         {"4: TOML, colonne 15: \\ annonce une lettre que TOML n'a pas (\\\\ pour une barre)"}},
        {whole + "points = 99999999999999999999\n",
         {"7: TOML, colonne 30: ce nombre dépasse 64 bits"}},
        {whole + "points = 01\n",
         {"7: TOML, colonne 12: un nombre ne commence pas par un zéro de trop"}},
        {whole + "points = 1 2\n", {"7: TOML, colonne 12: la ligne devrait finir là"}},
        {whole + "\n\n]\n", {"9: TOML, colonne 1: une clé ou une table est attendue"}},
    });
}

TEST(BrokenToml, BytesThatNoTextHasAreOneLine) {
    expect_told({
        {begun + "titre_en = \"a\xE9\"\n", {"4: ce n'est pas de l'UTF-8"}},
        {"\xFF\xFE"
         "f\0o\0",
         {"1: ce n'est pas de l'UTF-8"}},
        {begun + "# \xC0\x80\n", {"4: ce n'est pas de l'UTF-8"}},
        {begun + "[=]\n" + goal, {"4: TOML: faute de syntaxe"}},
        {whole + "\n[[+a]]\n" + goal, {"8: TOML: faute de syntaxe"}},
        {"[..", {"1: TOML: faute de syntaxe"}},
        {begun + "# \x01\n", {"4: caractère de contrôle"}},
        {begun + "titre_en = \"\x7F\"\n", {"4: caractère de contrôle"}},
        {begun + "# a\rb\n", {"4: caractère de contrôle"}},
        {begun + "[\x02", {"4: caractère de contrôle"}},
        {begun + std::string(1, '\0'), {"4: caractère de contrôle"}},
        {begun + "\n\xCB\xAD", {"5: caractère accentué ou autre hors d'un texte"}},
        {begun + "énoncé = 1\n", {"4: caractère accentué ou autre hors d'un texte"}},
        {begun + "titre_en\xC2\xA0= 'é' # é\n", {"4: caractère accentué ou autre hors d'un texte"}},
        {begun + "a" + std::string(3000, '.') + "a = 1\n",
         {"4: trop de tables les unes dans les autres"}},
    });
}

TEST(BrokenToml, DeepOnesAreRefused) {
    std::string dots = "a", quoted = "[\"\"\"x\"\"\"\"";
    for (int i = 0; i < 400'000; ++i) dots += ".a";
    for (const std::string& text :
         {dots + " = 1\n", "[" + dots + "]\n", "[[" + dots + "]]\n", "x = {" + dots + " = 1}\n",
          "x = [\n{\n" + dots + " = 1}]\n", "x = " + quoted + ", {" + dots + " = 1}]\n",
          "x = '\\', " + dots + " = 1\n", "x = \"\\\"\" # \"\"\"\n" + dots + " = 1\n"})
        EXPECT_EQ(problems_in(text).size(), 1u) << text.substr(0, 30);
    const std::string brackets(200'000, '['), braces = "{a=" + std::string(500'000, '{');
    for (const std::string& text : {"x = " + brackets, "x = " + braces, brackets})
        EXPECT_EQ(problems_in(text).size(), 1u) << text.substr(0, 30);
}

TEST(BrokenToml, TextsFullOfPointsAreNoDepth) {
    const std::string points(5000, '.');
    for (const std::string& text :
         {whole + "# " + points + "\n", begun + "titre_en = \"" + points + "\"\n" + goal,
          begun + "enonce_en = \"\"\"\n\\\"\"\"" + points + "\"\"\"\"\"\n" + goal,
          begun + "enonce_en = '''\n" + points + "'''\n" + goal})
        EXPECT_EQ(problems_in(text), lines()) << text.substr(0, 60);
}

/// Every problem is one line that can be shown, within the file; they are sorted.
void expect_orderly(const std::string& text) {
    const auto read = read_exercise(text, workcell_model(0));
    const auto* const problems = std::get_if<exercise_problems>(&read);
    if (!problems) return;
    ASSERT_FALSE(problems->empty());
    const auto last = 1 + std::count(text.begin(), text.end(), '\n');
    ASSERT_TRUE(std::ranges::is_sorted(*problems, {}, &exercise_problem::line)) << text;
    for (const exercise_problem& each : *problems) {
        ASSERT_TRUE(each.line >= 1 && each.line <= last) << each.line << "\n" << text;
        ASSERT_FALSE(each.reason.empty()) << text;
        for (const char byte : each.reason) ASSERT_GE(static_cast<unsigned char>(byte), 32) << text;
    }
}

TEST(BrokenToml, EveryBeginningAndEveryChangeIsReadInOrder) {
    for (std::size_t length = 0; length <= every_key.size(); ++length)
        expect_orderly(every_key.substr(0, length));
    std::mt19937 chance(7);
    const std::string bytes = "\"'[]{}=.,#\\\n\r\t 019-abenst\xC3\x80";
    for (int round = 0; round < 4000; ++round) {
        std::string text = every_key;
        for (unsigned changes = 1 + chance() % 3; changes > 0; --changes) {
            const std::size_t at = chance() % text.size();
            text.replace(at, chance() % 3, chance() % 3, bytes[chance() % bytes.size()]);
        }
        expect_orderly(text);
    }
}

}  // namespace
