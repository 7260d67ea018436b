// The standard streams of a program whose caller may have closed some of them, or sent them to a
// file that may not grow.
#pragma once

/// What becomes of a standard stream that the caller closed.
enum class closed_stream {
    /// What is written on it is gone, and all is well.
    swallows,
    /// Writing on it fails.
    takes_nothing
};

/// Opens the standard streams that the caller closed on /dev/null, so that no file or connection
/// that is opened later gets their number. To be called first of all in `main`.
void open_closed_streams(closed_stream closed);

/// From now on a file that may not grow (`ulimit -f`) fails whoever writes on it, and does not end
/// the program. SIGXFSZ is caught, not ignored: programs that this one starts have its default
/// again, and what a caller ignores or catches stays as it is.
void outlive_full_files();
