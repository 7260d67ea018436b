#include "lesson/sha256.h"

#include <sys/types.h>

#include <sha2.h>

std::string sha256(std::string_view bytes) {
    SHA2_CTX context;
    SHA256Init(&context);
    SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    std::string digest(SHA256_DIGEST_LENGTH, '\0');
    SHA256Final(reinterpret_cast<std::uint8_t*>(digest.data()), &context);
    return digest;
}

std::string sha256_digits(std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char each : sha256(bytes)) {
        const auto value = static_cast<unsigned char>(each);
        text += {digits[value / 16], digits[value % 16]};
    }
    return text;
}
