#include "lesson/verdict_words.h"

#include "session/keyed_rows.h"

namespace {

struct word_row {
    verdict_word key;
    bilingual sentence;
};

// clang-format off
constexpr word_row rows[] = {
    {verdict_word::task,           {"Exercice : {0}",
                                    "Exercise: {0}"}},
    {verdict_word::reached,        {"But {0}, {1} : atteint à {2} s, {3}.",
                                    "Goal {0}, {1}: reached at {2} s, {3}."}},
    {verdict_word::too_late,       {"But {0}, {1} : atteint trop tard, à {2} s ; la limite était à {3} s.",
                                    "Goal {0}, {1}: reached too late, at {2} s; the limit was at {3} s."}},
    {verdict_word::missing,        {"But {0}, {1} : pas atteint ; à la fin, à {2} s, il manquait {3}.",
                                    "Goal {0}, {1}: not reached; at the end, at {2} s, this was missing: {3}."}},
    {verdict_word::missing_since,  {"{0} depuis {1} s",
                                    "{0} since {1} s"}},
    {verdict_word::held_too_short, {"But {0}, {1} : pas atteint ; à la fin, à {2} s, tout y était, mais depuis {3} s seulement : il fallait {4} s.",
                                    "Goal {0}, {1}: not reached; at the end, at {2} s, all was there, but only since {3} s: it takes {4} s."}},
    {verdict_word::not_its_turn,   {"But {0}, {1} : pas atteint ; à la fin, à {2} s, le but {3} manquait encore.",
                                    "Goal {0}, {1}: not reached; at the end, at {2} s, goal {3} was still missing."}},
    {verdict_word::banned,         {"Jamais {0}, {1} : c'est arrivé à {2} s.",
                                    "Never {0}, {1}: it happened at {2} s."}},
    {verdict_word::banned_for,     {"Jamais {0}, {1} : c'est arrivé à {2} s, moins {3}.",
                                    "Never {0}, {1}: it happened at {2} s, less {3}."}},
    {verdict_word::not_banned,     {"Jamais {0}, {1} : ce n'est pas arrivé.",
                                    "Never {0}, {1}: it did not happen."}},
    {verdict_word::hint,           {"Indice, à {0} s : {1}.",
                                    "Hint, at {0} s: {1}."}},
    {verdict_word::counts,         {"À la fin : bonnes={0} mauvaises={1} incidents={2}.",
                                    "At the end: good={0} bad={1} incidents={2}."}},
    {verdict_word::balance_kept,   {"Bilan {0}, {1} : {2}, {3}.",
                                    "Count {0}, {1}: {2}, {3}."}},
    {verdict_word::balance_failed, {"Bilan {0}, {1} : à la fin, à {2} s, {3} ; il fallait {4}.",
                                    "Count {0}, {1}: at the end, at {2} s, {3}; it takes {4}."}},
    {verdict_word::at_least,       {"au moins {0}",
                                    "at least {0}"}},
    {verdict_word::at_most,        {"au plus {0}",
                                    "at most {0}"}},
    {verdict_word::hidden_faults,  {"Pannes cachées : {0}.",
                                    "Hidden faults: {0}."}},
    {verdict_word::right_answer,   {"Diagnostic : {0}, juste, répondu à {1} s, {2}.",
                                    "Diagnosis: {0}, right, answered at {1} s, {2}."}},
    {verdict_word::wrong_answer,   {"Diagnostic : {0}, faux, répondu à {1} s ; il fallait {2}.",
                                    "Diagnosis: {0}, wrong, answered at {1} s; right is {2}."}},
    {verdict_word::no_answer,      {"Diagnostic : pas de réponse jusqu'à la fin, à {0} s ; il fallait {1}.",
                                    "Diagnosis: no answer until the end, at {0} s; right is {1}."}},
    {verdict_word::points,         {"Points : {0} sur {1}.",
                                    "Points: {0} of {1}."}},
    {verdict_word::passed,         {"Exercice réussi à {0} s.",
                                    "Exercise passed at {0} s."}},
    {verdict_word::failed,         {"Exercice non réussi, terminé à {0} s.",
                                    "Exercise not passed, over at {0} s."}},
    {verdict_word::and_then,       {" et ",
                                    " and "}},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

std::string said(verdict_word word, language in, std::initializer_list<std::string> values) {
    std::string text;
    for (const char* from = row_of(rows, word).sentence.in(in); *from != '\0'; ++from) {
        if (*from != '{') {
            text += *from;
            continue;
        }
        text += values.begin()[from[1] - '0'];
        from += 2;
    }
    return text;
}
