// The simulator's half of the link: makes the segment, publishes inputs, reads the commands that a
// panel writes.
//
// Construct with the two lists of names; give memory_ident() to the panel; then setreset_input for
// each input that changed, inputs_go once, and output_value at will; at the end sharing_terminate.
// One thread.
#pragma once
#include <cstdint>
#include <list>
#include <string>

#include "ioshare/io_segment.h"

class IOsharemem_server {
public:
    std::int32_t ident;   ///< The System V identifier of the segment.
    io_segment* segment;  ///< The attached segment.

    /// Makes a new segment, readable and writable by its owner only, with every value 0. A name's
    /// place in its list is its index. Room is for 41 names of 49 bytes in each direction; longer
    /// names or lists are not detected, and run on into what follows in the segment (never beyond
    /// its end). A segment that cannot be made or attached ends the process: a report on the
    /// standard error stream, status 1.
    IOsharemem_server(const std::list<std::string>& inputs, const std::list<std::string>& outputs);

    /// Does nothing: the segment stays, attached and existing. Removing it is the caller's (shmctl
    /// with IPC_RMID).
    ~IOsharemem_server() {}

    /// What a panel is started with, after -automemlink. 0 on a machine's very first segment:
    /// clients refuse that one.
    int memory_ident();

    /// Publishes the values set since the last time: raises inputs_clock by one, without the lock.
    void inputs_go();

    /// Sets input `index` (from 0) under the lock; clients see it at the next inputs_go. Ignored
    /// out of range.
    void setreset_input(int index, int value);

    /// The command of output `index` (from 0), read without the lock; 0 out of range.
    int output_value(int index);

    /// How many times clients announced their outputs (outputs_refresh) since one last attached;
    /// read under the lock.
    std::int64_t get_outputs_clock();

    /// Announces the end of the session: every client stops at its next receive(). A publication
    /// after it would open the session again.
    void sharing_terminate();
};
