// The standard streams of a program whose caller may have closed some of them.
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
