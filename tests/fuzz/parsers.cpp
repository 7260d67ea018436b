// The number parsers and the checks beside them, on any bytes.
#include <memory>

#include "strings/lexical_validation.h"
#include "strings/number_formatting.h"
#include "strings/number_parsing.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void parse_numbers(const std::string& text) {
    law(static_cast<int>(Stol(text)) == Stoi(text), "Stoi is Stol in 32 bits");
    law(Stoll(text) == Stol(text), "Stoll is Stol");
    law(Stoi(long2S(Stoi(text))) == Stoi(text), "Stoi reads what long2S writes");
    law(Stouhex("0" + text) == Stouhex(text), "a leading zero changes nothing");
    law(static_cast<unsigned long>(Stosbin("0" + text)) ==
            static_cast<unsigned long>(Stoubin(text)),
        "a zero sign changes nothing");
    Stoshex(text);
    Stosbin(text);
    const std::unique_ptr<char[]> copy(Stoa(text));
    law(std::string(copy.get(), text.size() + 1) == text + '\0', "Stoa copies and ends with NUL");
}

void check_forms(const std::string& text, char separator) {
    law(checkdouble(text, separator) || Stod(text, separator) == 0.0,
        "Stod reads as 0 what checkdouble refuses");
    law(checkint("-" + text) == checkuint(text), "checkint adds a sign to checkuint");
    law(checkhexintel(text + "h") == checkhex(text), "checkhexintel adds an h to checkhex");
    law(!checkuint(text) || (checkhex(text) && beginbynumber(text)), "decimal is hexadecimal");
    law(!checkvarname(text) || checkvarname_with_pre_underscore(text), "a name is a name");
    checkbin(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    drop_traces();
    fuzz_input input(data, size);
    const char separator = input.byte();
    const std::string marker = input.text(3), text = input.rest();
    parse_numbers(text);
    check_forms(text, separator);
    check_forms(text, '.');
    Stohex(text, marker);
    Stoloruhex(marker, text);
    return 0;
}
