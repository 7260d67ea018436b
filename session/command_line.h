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
    /// "--speed"
    std::string name;
    /// "X"; empty for a flag
    std::string value_name;
    /// French, one line, without an end of line
    std::string meaning;
    /// Whether it may be given more than once; a second time is misuse elsewhere.
    bool repeatable = false;
    /// Whether it takes all the words up to the next option or "--".
    bool several = false;
    /// Takes a value (empty for a flag), or throws `misuse` with what is wrong about it: the option
    /// and the value are told before that. An empty value never gets here. Called once for each
    /// word of an option that takes several.
    std::function<void(const std::string& value)> take;
};

/// A program's command line.
struct command_line {
    /// "zk4sim"
    std::string program;
    /// French, one line
    std::string description;
    /// How the usage shows what is no option: "<ident> COMMANDE"; empty: nothing else is taken.
    std::string operands = {};
    /// In the order of the help, and of the calls of `take`.
    std::vector<command_option> options = {};
    /// More lines of help, after the options; each ends with an end of line.
    std::string notes = {};
};

/// What is left to do once a command line was read.
struct command_words {
    /// The words that are no options, in their order.
    std::vector<std::string> operands;
    /// The options that were given, as the table calls them and in its order.
    std::vector<std::string> given = {};
    /// What --help or --version prints instead of all else.
    std::optional<std::string> answer = {};
};

/// Reads the words after the program's name, in any order, and calls `take` for each option given,
/// in the order of the table. --help, -h and --version win over everything else, wherever they
/// stand. Throws `misuse` with one French line that names the first word not understood. After
/// "--" all words are operands.
[[nodiscard]] command_words read_command_line(const command_line& line,
                                              const std::vector<std::string>& words);

/// The number that `value` is, a point in every locale. Throws `misuse` for any other text, and for
/// one beyond the limits.
[[nodiscard]] double number_between(const std::string& value, double least, double most);

/// A row of a table of options, checked by `one_row_each`: each option's name, value, meaning and
/// what it does, in one place.
template <class Key, class Options>
struct option_row {
    /// The row's place: `one_row_each` holds the table to the enumeration.
    Key key;
    /// "--speed"
    const char* name;
    /// "X"; empty for a flag
    const char* value_name;
    /// French, one line
    const char* meaning;
    /// As in `command_option`.
    bool repeatable;
    /// As in `command_option`; the value goes to `options`.
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
