// Segments that no simulator makes: of any size, with any bytes.
#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "bench/soak/attack.h"
#include "ioshare/io_segment.h"

/// A private segment, attached; marked for removal at once, and gone with the object.
class hostile_segment {
public:
    /// A size from 1 byte to five pages, half of them the right one.
    explicit hostile_segment(attack& run);
    ~hostile_segment();
    hostile_segment(const hostile_segment&) = delete;
    hostile_segment& operator=(const hostile_segment&) = delete;

    /// Other bytes: at random, nearly those of a station, or the limits of every field.
    void fill(attack& run);
    /// Changes a few bytes, as a simulator gone wild would under its clients.
    void disturb(attack& run);
    /// A lock that is merely held would be waited for until the session is over, as it should be.
    void open_lock();

    int ident() const { return ident_; }
    std::size_t size() const { return size_; }
    unsigned char* bytes() const { return bytes_; }

private:
    void store(std::size_t at, const void* value, std::size_t length);
    void fill_like_a_station(attack& run);
    void set_limits(attack& run);

    std::size_t size_;
    int ident_;
    unsigned char* bytes_;
};

/// Names to ask such a segment for.
extern const std::array<std::string, 6> asked_names;
