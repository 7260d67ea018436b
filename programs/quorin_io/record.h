// Recording a link from outside.
#pragma once
#include "programs/quorin_io/request.h"
#include "recording/recording_form.h"

/// The form that --format names, or else the end of the file's name. Throws `misuse` when neither
/// does.
[[nodiscard]] recording_kind kind_of_recording(const io_request& asked);

/// Records the link in a file until the session ends, or until SIGINT; after SIGTERM and SIGHUP the
/// process ends with status 128 and the signal's number, and the file is whole. Throws a `failure`
/// when the session is over already, and when the file takes no more.
void record_link(io_observer& segment, const io_request& asked);
