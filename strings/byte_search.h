// The one search for a run of bytes in a text, linear however often the two nearly agree.
#pragma once
#include <cstring>
#include <string_view>

namespace byte_search {

/// Up to this length, trying every place where the
/// first byte matches is quicker than any preparation.
constexpr std::size_t short_pattern = 16;

/// Offset of the first `pattern` in `text` at or after `from`, or `std::string_view::npos`. An
/// empty pattern is found at `from`, which is at most the length of `text`.
inline std::size_t first_occurrence(std::string_view text, std::string_view pattern,
                                    std::size_t from = 0) {
    if (pattern.size() <= short_pattern) return text.find(pattern, from);
    // memmem never goes back over the text. find may: looking for "aaa...ab" in "aaa...aa" takes it
    // the product of the two lengths.
    const void* const found =
        memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
                 : std::string_view::npos;
}

}  // namespace byte_search
