// Texts of our own in both of their languages.
#pragma once

enum class language { french, english };

/// UTF-8; both outlive whoever shows them.
struct bilingual {
    const char* french;
    const char* english;
    constexpr const char* in(language wanted) const {
        return wanted == language::english ? english : french;
    }
};

/// Between a name and what is said of it.
inline constexpr bilingual colon = {" : ", ": "};
