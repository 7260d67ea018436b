// Command lines, from one table: what each option is called, means and takes. The help, the check
// and the words of refusal all come from it.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One option, as `--name VALUE` or, as a flag, `--name`.
struct command_option {
    std::string name;        ///< "--speed"
    std::string value_name;  ///< "X"; empty for a flag
    std::string meaning;     ///< French, one line, without an end of line
    bool repeatable = false;
    bool several = false;  ///< Takes all the words up to the next option or "--".
    /// Takes a value (empty for a flag), or throws `misuse`. An empty value never gets here. Called
    /// once for each word of an option that takes several.
    std::function<void(const std::string& value)> take;
};

/// A program's command line.
struct command_line {
    std::string program;      ///< "zk4sim"
    std::string description;  ///< French, one line
    std::string operands;     ///< How the usage shows what is no option: "<ident> COMMANDE"; empty:
                              ///< nothing else is taken.
    std::vector<command_option> options;
    std::string notes;  ///< More lines of help, after the options; each ends with an end of line.
};

/// What is left to do once a command line was read.
struct command_words {
    std::vector<std::string> operands;  ///< The words that are no options, in their order.
    std::optional<std::string> answer =
        {};  ///< What --help or --version prints instead of all else.
};

/// Reads the words after the program's name, in any order, and calls `take` for each option given,
/// in the order of the table. --help, -h and --version win over everything else, wherever they
/// stand. Throws `misuse` with one French line that names the first word not understood. After
/// "--" all words are operands.
command_words read_command_line(const command_line& line, const std::vector<std::string>& words);

/// The number that the value of `option` is, a point in every locale. Throws `misuse` for any other
/// text, and for one beyond the limits.
double number_between(std::string_view option, const std::string& value, double least, double most);

/// A row of a table of options, checked by `one_row_each`: each option's name, value, meaning and
/// what it does, in one place.
template <class Key, class Options>
struct option_row {
    Key key;
    const char* name;        ///< "--speed"
    const char* value_name;  ///< "X"; empty for a flag
    const char* meaning;     ///< French, one line
    bool repeatable;
    void (*take)(Options& options, const std::string& value);
};

/// Adds the rows of a table to a command line; values go to `options`, which must live as long.
template <class Rows, class Options>
void add_options(command_line& line, const Rows& rows, Options& options) {
    for (const auto& row : rows)
        line.options.push_back(
            {row.name, row.value_name, row.meaning, row.repeatable, false,
             [&options, take = row.take](const std::string& value) { take(options, value); }});
}
