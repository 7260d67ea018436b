// A panel that sets everything in motion and is killed while it holds the link's lock and the
// station waits for it.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "ioshare/io_client.h"

int main(int, char** argv) {
    const IOsharemem_client client(std::atoi(argv[2]));
    std::ranges::fill(client.segment->output_values, 1);
    usleep(100'000);
    while (sem_trywait(&client.segment->lock) != 0) usleep(10);
    usleep(300'000);
    raise(SIGKILL);
}
