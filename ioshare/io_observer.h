// Looking at a shared I/O segment from beside the link, by its identifier, without a client's
// effects on it: the process is never ended, no clock moves, and a session does not take an
// observer for the one who commands.
//
// Open it, ask problem(), then look() at will. The names are those at the opening. One thread.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ioshare/io_announcement.h"
#include "ioshare/io_slots.h"

/// One input or output, as the last look found it.
struct io_signal {
    /// Input or output, of the segment: an input is what the panel sees.
    io_direction direction;
    std::string name;  ///< Any bytes but NUL; io_printable() makes them fit to be shown.
    /// As the segment holds it: any number.
    std::int32_t value;
    bool changed;  ///< Whether `value` differs from the look before. False after the opening.
};

class io_observer {
public:
    /// Attaches to segment `ident` until this object goes, reads the names, and looks for the first
    /// time. Announces it first: opened for reading it never counts as a commander (`zk4sim
    /// --commander-timeout`), opened for writing it does. A failure is told by `problem()`.
    io_observer(int ident, io_access access);
    ~io_observer();
    io_observer(const io_observer&) = delete;
    io_observer& operator=(const io_observer&) = delete;

    /// Why it could not attach, in one French line without an end of line: "segment 12: il n'existe
    /// pas". Empty when it could. With a problem there are no signals, and the session is over.
    [[nodiscard]] const std::string& problem() const { return problem_; }

    /// Whether the session has ended, as the segment says now.
    [[nodiscard]] bool session_over() const;

    /// Takes the values as they stand now. Returns whether any differs from the look before;
    /// `changed` says which. The inputs are those of one publication, as far as can be told without
    /// the lock: they were read twice, alike, under an unmoved clock. Allocates nothing.
    bool look();

    /// The publication clock under which the last look found the inputs; below 0 once the session
    /// is over. One look may miss several publications (`io_publications_since`), and values that
    /// differ under a clock that stands were written and not published.
    [[nodiscard]] std::int64_t publication() const { return publication_; }

    /// Every input, then every output, each in the order of the segment; those whose names begin
    /// inside the segment. Valid as long as the observer.
    [[nodiscard]] std::span<const io_signal> signals() const { return signals_; }

    /// The signal that a name means: an input before an output, the last of those named alike, as
    /// the panel reads them. Null when there is none. Valid as long as the observer.
    [[nodiscard]] const io_signal* find(std::string_view name) const;
    /// The same among the signals of one direction.
    [[nodiscard]] const io_signal* find(io_direction direction, std::string_view name) const;

    /// Writes `value` for every output of that name, at once and without the lock; nothing when
    /// there is none, or when the observer was opened for reading. Safe in a signal handler.
    void write(std::string_view name, std::int32_t value);
    /// The same for output `index` alone, from 0 in the order of the segment; nothing out of range.
    void write(int index, std::int32_t value);
    /// How many outputs there are among the signals.
    [[nodiscard]] int outputs() const { return static_cast<int>(signals_.size() - inputs_); }

private:
    void attach(int ident);
    void read_names(io_direction direction, std::int32_t count);
    void read_values(std::vector<std::int32_t>& to) const;

    io_access access_;
    io_segment* segment_ = nullptr;
    std::string problem_;
    std::int64_t publication_ = -1;
    std::vector<io_signal> signals_;
    std::size_t inputs_ = 0;                 // How many of the signals are inputs.
    std::vector<std::int32_t> now_, again_;  // The values of two readings, as long as the signals.
};
