// Substrings, substitutions, case folding and the document filters, on any bytes.
#include "strings/case_folding.h"
#include "strings/document_filters.h"
#include "strings/edit_distance.h"
#include "strings/substring_editing.h"
#include "strings/text_search.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void cut(const std::string& text, int from, int to) {
    law(from < 0 || my_before(text, from) + my_after(text, from) == text,
        "both parts give the text back");
    const std::string part = my_at(text, from, to);
    law(part == my_before(my_after(text, from), static_cast<int>(part.size())),
        "a part is the front of an end");
    law(bdelete("[" + text + "]") == text, "bdelete strips a pair");
}

void substitute(const std::string& text, const std::string& pattern,
                const std::string& replacement) {
    law(substitute_string(text, pattern, pattern) == text, "a pattern for itself changes nothing");
    law(contains(text, pattern) || substitute_string(text, pattern, replacement) == text,
        "a pattern that does not occur changes nothing");
    if (pattern.size() == 1)
        law(substitute_char(text, pattern[0], replacement) ==
                substitute_string(text, pattern, replacement),
            "a character is a pattern");
    law(clever_substitute_space(text, ' ') == cancel_begin_end_spaces(text), "a blank for a blank");
}

void fold(const std::string& text) {
    law(downcase(text).size() == text.size(), "downcase keeps every byte");
    law(upcase(upcase_accent(text)) == upcase_accent(text), "upcase_accent leaves capitals");
    law(upcase(upcase_accent2(text)) == upcase_accent2(text), "upcase_accent2 leaves capitals");
    law(rtf_String_filter(text).find('$') == std::string::npos, "RTF escapes every dollar");
    law(latex_String_filter(text).size() == text.size() + char_occurences(text, '_'),
        "LaTeX escapes each underscore");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz_input input(data, size);
    const int from = input.number(), to = input.number();
    const std::string pattern = input.text(4), replacement = input.text(4), text = input.rest();
    cut(text, from, to);
    cut(text, from % 64, to % 64);
    substitute(text, pattern, replacement);
    fold(text);
    law(levenshtein(text, pattern) == levenshtein(pattern, text), "a distance has no direction");
    return 0;
}
