#include "strings/document_filters.h"

#include <iterator>

#include "strings/substring_editing.h"

namespace {

struct substitution {
    const char* pattern;
    const char* replacement;
};

// In this order: the apostrophe comes first, as every escape contains one.
constexpr substitution rtf_escapes[] = {
    {"'", "\\'91"},             // apostrophe: code 91, the left quotation mark
    {"\xE2\x80\x99", "\\'27"},  // right single quotation mark: code 27, the apostrophe
    {"\xC2\xAB", "\\'ab"},      // left guillemet
    {"\xC2\xBB", "\\'bb"},      // right guillemet
    {"\xE2\x80\x93", "-"},      // en dash
    {"\xC3\x89", "\\'c9"},      // E acute
    {"\xC3\x88", "\\'c8"},      // E grave
    {"\xC3\x8A", "\\'ca"},      // E circumflex
    {"\xC3\x8B", "\\'cb"},      // E diaeresis
    {"\xC3\x87", "\\'c7"},      // C cedilla
    {"\xC3\xA9", "\\'e9"},      // e acute
    {"\xC3\xA8", "\\'e8"},      // e grave
    {"\xC3\xAA", "\\'ea"},      // e circumflex
    {"\xC3\xAB", "\\'eb"},      // e diaeresis
    {"\xC3\xA7", "\\'e7"},      // c cedilla
    {"\xC3\xA0", "\\'eO"},      // a grave: the letter O, as documents in use have it
    {"\xC3\xB6", "\\'f6"},      // o diaeresis
    {"\xC3\xB4", "\\'f4"},      // o circumflex
    {"\xC3\xAE", "\\'ee"},      // i circumflex
    {"\xC3\xAF", "\\'ef"},      // i diaeresis
    {"\xC3\x97", "x"},          // multiplication sign
    {"#", "'23"},               // no backslash, as documents in use have it
    {"$", "\\'24"},
};
static_assert(std::size(rtf_escapes) == 23);

}  // namespace

std::string rtf_String_filter(const std::string& text) {
    std::string filtered = text;
    for (const substitution& each : rtf_escapes)
        filtered = substitute_string(filtered, each.pattern, each.replacement);
    return filtered;
}

std::string latex_String_filter(const std::string& text) {
    return substitute_string(text, "_", "\\_");
}
