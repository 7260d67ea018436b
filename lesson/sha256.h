// SHA-256, by which files are told apart.
#pragma once
#include <string>
#include <string_view>

/// The 32 bytes.
[[nodiscard]] std::string sha256(std::string_view bytes);

/// The same as 64 hexadecimal digits, lower case.
///
///     sha256_digits("").substr(0, 8)  // "e3b0c442"
[[nodiscard]] std::string sha256_digits(std::string_view bytes);
