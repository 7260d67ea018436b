// Texts that a careless call would change: formats, symbols, foreign bytes, long ones.
#pragma once
#include <string>
#include <vector>

inline const std::vector<std::string> awkward_texts = {
    "",
    "te",
    "100 %",
    "%s%n%d",
    "@->",
    "@@ @",
    "a\tb",
    "deux\nlignes",
    "re\xE7ue",
    "d\xC3\xA9pos\xC3\xA9"
    "e",
    std::string(100000, 'x'),
    std::string(1500, '%') + "s%n",
};
