// The bytes of a file that is read once, from its beginning to its end.
#pragma once
#include <array>
#include <streambuf>
#include <string>

class input_bytes : public std::streambuf {
public:
    /// Opens the file; "-" is the standard input. Throws `refusal`, with the path and what the
    /// system says.
    explicit input_bytes(const std::string& path);
    ~input_bytes() override;
    input_bytes(const input_bytes&) = delete;
    input_bytes& operator=(const input_bytes&) = delete;

protected:
    /// Throws `refusal` when the file cannot be read on. Where a session is to end before there are
    /// more bytes (session/end_signals.h), there are none.
    int_type underflow() override;
    /// To the beginning alone, of a file that has one.
    pos_type seekpos(pos_type place, std::ios_base::openmode mode) override;

private:
    bool ready() const;
    [[noreturn]] void refuse() const;

    std::string path_;
    int descriptor_;
    std::array<char, 65536> buffer_;
};
