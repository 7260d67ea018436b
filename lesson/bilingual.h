// Texts of our own in both of their languages.
#pragma once

/// What texts are told in.
enum class language { french, english };

/// UTF-8; both outlive whoever shows them.
struct bilingual {
    /// The same in both languages, as literals.
    const char* french;
    const char* english;
    /// The one of that language.
    constexpr const char* in(language wanted) const {
        return wanted == language::english ? english : french;
    }
};

/// Between a name and what is said of it.
inline constexpr bilingual colon = {" : ", ": "};
