#include "programs/quorin_io/output.h"

#include <poll.h>
#include <unistd.h>

#include "session/failure.h"

namespace {

constexpr int look_pause_ms = 2;

}  // namespace

void pause_between_looks() { usleep(look_pause_ms * 1000); }

void pause_between_printed_looks() {
    // Asked for nothing, it still tells that its reader has gone.
    pollfd output{STDOUT_FILENO, 0, 0};
    if (poll(&output, 1, look_pause_ms) > 0) throw output_refusal();
}
