// What can be wrong with a machine, as a test makes it so around one command: a full disk, no
// segments, another user. A shell's words; 77 is the status of a machine on which it cannot be
// made, and each says what that takes.
#pragma once
#include <string>
#include <vector>

#include "session/keyed_rows.h"

enum class circumstance {
    none,
    no_display,
    dead_display,
    other_user,
    full_disk,
    read_only_disk,
    files_that_may_not_grow,
    full_output,
    closed_output,
    closed_input,
    closed_errors,
    no_segment_left,
    no_segment_memory,
    small_segments_only,
    no_memory_to_make,
    no_memory_to_attach,
    count,
};

/// What a command is started by, in front of the shell, and what that takes of the machine.
struct means {
    std::vector<std::string> command;
    const char* needed;
};

struct circumstance_row {
    circumstance key;
    const char* name;
    means apart;
    /// Before the command; `$disk` is a folder.
    const char* before;
    /// Behind it.
    const char* redirection = "";
};

inline const means of_own_disks = {{"unshare", "--user", "--map-root-user", "--mount"},
                                   "user and mount namespaces of one's own"};
inline const means of_own_segments = {{"unshare", "--user", "--map-root-user", "--ipc"},
                                      "user and IPC namespaces of one's own"};
inline const means as_another_user = {
    {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"}, "root's rights"};
inline const means without_memory_to_make = {{QUORIN_PROGRAMS "/with_refused_call", "shmget"},
                                             "filters of system calls"};
inline const means without_memory_to_attach = {{QUORIN_PROGRAMS "/with_refused_call", "shmat"},
                                               "filters of system calls"};

// clang-format off
inline const circumstance_row circumstances[] = {
    {circumstance::none,                    "nothing wrong",       {}, ""},
    {circumstance::no_display,              "no display",          {}, "unset DISPLAY"},
    {circumstance::dead_display,            "a display that is none", {}, "DISPLAY=:9998; export DISPLAY"},
    {circumstance::other_user,              "another user",        as_another_user, ""},
    {circumstance::full_disk,               "a full disk",         of_own_disks,
     "mount -t tmpfs -o size=16k none $disk || exit 77; echo mine >$disk/old; head -c 16384 /dev/zero 2>&- >$disk/full"},
    {circumstance::read_only_disk,          "a read-only disk",    of_own_disks,
     "mount -t tmpfs none $disk || exit 77; echo mine >$disk/old; : >$disk/full; mount -o remount,ro $disk || exit 77"},
    {circumstance::files_that_may_not_grow, "files that may not grow", {},
     "echo mine >$disk/old; : >$disk/full; ulimit -f 1"},
    {circumstance::full_output,             "a full output",       {}, "", ">/dev/full"},
    {circumstance::closed_output,           "a closed output",     {}, "", ">&-"},
    {circumstance::closed_input,            "a closed input",      {}, "", "<&-"},
    {circumstance::closed_errors,           "a closed error stream", {}, "", "2>&-"},
    {circumstance::no_segment_left,         "no segment left",     of_own_segments, "echo 0 >/proc/sys/kernel/shmmni || exit 77"},
    {circumstance::no_segment_memory,       "no memory for segments", of_own_segments, "echo 0 >/proc/sys/kernel/shmall || exit 77"},
    {circumstance::small_segments_only,     "small segments only", of_own_segments, "echo 4560 >/proc/sys/kernel/shmmax || exit 77"},
    {circumstance::no_memory_to_make,       "no memory for a segment", without_memory_to_make, ""},
    {circumstance::no_memory_to_attach,     "no memory to attach a segment", without_memory_to_attach, ""},
};
// clang-format on
