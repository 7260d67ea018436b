// A text on its way to the toolkit, which takes NUL-terminated
// arrays: a copy that is released with its scope.
//
// A NUL byte inside the text ends it for the toolkit, and for the toolkit only.
#pragma once
#include <memory>
#include <string>

#include "strings/number_parsing.h"

class toolkit_text {
public:
    explicit toolkit_text(const std::string& text) : copy_(Stoa(text)) {}
    operator const char*() const { return copy_.get(); }

private:
    std::unique_ptr<char[]> copy_;
};
