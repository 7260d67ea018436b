// Records and tokens, on any bytes, and with the rest stored in the input.
#include "strings/record_scanning.h"
#include "strings/substring_editing.h"
#include "strings/text_search.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void cut_records(const std::string& text, char separator, const std::string& set) {
    std::string rest = text, joined;
    for (int left = char_occurences(text, separator); left > 0; --left)
        joined += next_record(rest, separator, rest) + separator;
    law(joined + rest == text, "records joined give the text back");

    std::string last = text;
    const std::string head = last_record(last, separator, last);
    law((char_occurences(text, separator) ? head + separator + last : head) == text,
        "head and last record joined give the text back");

    char found = '?';
    rest = text;
    const std::string record = next_record(rest, set.c_str(), rest, found);
    law(record == text || record + found + rest == text, "what was found stood between");
}

void take_tokens(const std::string& text, char separator) {
    std::string rest = text, joined;
    const std::string alone(1, separator);
    while (!rest.empty()) {
        const std::size_t length = rest.size();
        const std::string token = next_Stringtoken(rest, separator, &rest);
        law(!token.empty() && rest.size() < length, "each call takes a token");
        if (token != alone) joined += token;
    }
    law(joined == substitute_char(text, separator, ""), "only separators are lost");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz_input input(data, size);
    const char separator = input.byte();
    const std::string set = input.text(4), token = input.text(4), replacement = input.text(4);
    const std::string text = input.rest();
    cut_records(text, separator, set);
    take_tokens(text, separator);
    law(substitute_token(text, token, token) == text, "a token for itself changes nothing");
    const std::string replaced = substitute_token(text, token, replacement);
    law(contains(text, token) || replaced == text, "without the token nothing changes");
    law(contains(text, token) || !contains_token(text, token), "a token that is not there");
    return 0;
}
