// The pages of this project, read by tests that do what they say.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/files.h"

/// The text of a page, named from the root: "docs/workcell.md".
inline std::string page(const std::string& name) { return bytes_of(QUORIN_SOURCE "/" + name); }

/// The lines of a text, without their ends.
inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

/// What stands below a heading, up to the next one: "" when there is none of these words.
inline std::string section(const std::string& text, const std::string& heading) {
    std::string found;
    bool inside = false;
    for (const std::string& line : lines_of(text)) {
        if (line.starts_with("## "))
            inside = line == "## " + heading;
        else if (inside)
            found += line + "\n";
    }
    return found;
}

/// The blocks of code of one language, as they stand: "sh", "cpp".
inline std::vector<std::string> code_blocks(const std::string& text, const std::string& language) {
    std::vector<std::string> blocks;
    bool inside = false;
    for (const std::string& line : lines_of(text)) {
        if (inside && line == "```")
            inside = false;
        else if (inside)
            blocks.back() += line + "\n";
        else if (line == "```" + language)
            inside = true, blocks.emplace_back();
    }
    return blocks;
}
