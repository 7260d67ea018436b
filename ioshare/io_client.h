// The panel's half of the link: takes what a simulator publishes, writes outputs by name.
//
// Construct once; then call receive() repeatedly, and read the inputs after each 1 that it returns.
// Outputs may be written at any time. One thread. docs/segment.md walks through an exchange.
#pragma once
#include <cstdint>
#include <string>

#include "ioshare/io_segment.h"

class IOsharemem_client {
public:
    std::int32_t nb_inputs;   ///< Input count, read from the segment at attach time.
    std::int32_t nb_outputs;  ///< Output count, read from the segment at attach time.
    io_segment* segment;      ///< The attached segment.
    /// The last publication taken: nb_inputs values, none when that is negative, 1126 at most.
    std::int32_t* inputs;
    std::int64_t last_clock;  ///< inputs_clock at the last publication taken; 0 after attach.

    /// Attaches to the segment `ident_mem`, and zeroes its outputs_clock. Prints "ident_mem=" and
    /// the identifier on the standard error stream. An identifier of 0, one that cannot be attached
    /// for reading and writing, a segment shorter than the layout, or one whose lock is none
    /// (`io_lock_is_sound`) ends the process: a report on the standard error stream, status 1.
    explicit IOsharemem_client(int ident_mem);

    /// Does nothing: the segment stays attached and `inputs` allocated until the process ends.
    ~IOsharemem_client() {}

    /// Takes a publication, if there is a new one, into `inputs`. Several since the last call count
    /// as one. Returns 1 when it took one; 0, after 10 ms, when nothing is new; -1, at once, when
    /// the session has ended, or somebody wrote over the lock.
    int receive();

    /// The value of the input called `name` (exact comparison) in the last publication taken: not
    /// in the segment. The last one wins when several bear the name; 0 when none does.
    int input_is_set(const std::string& name);

    /// Writes `value` into the segment for every output called `name`, at once and without the
    /// lock. An unknown name writes nothing.
    void setreset_output(const std::string& name, int value);

    /// Raises outputs_clock, under the lock: a server that waits for it learns of new outputs.
    void outputs_refresh();
};
