// Two processes that take the link's lock as often as they can: how long one of them waits at most,
// and whether both ever hold it.
//
//     build/release/bin/soak_lock 100000000
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <new>

#include "bench/soak/attack.h"
#include "ioshare/io_lock.h"

namespace {

constexpr double longest_wait_s = 0.25;

/// What both processes see.
struct shared_page {
    io_segment segment;
    /// Not atomic: it comes out right only when nobody raises it beside another.
    volatile long raised;
    std::atomic<int> ready;
    struct {
        long taken;
        double longest_s;
    } of[2];
};

void take_often(shared_page& page, int self, long times) {
    using clock = std::chrono::steady_clock;
    ++page.ready;
    while (page.ready < 2) usleep(100);
    double longest_s = 0;
    for (long i = 0; i < times; ++i) {
        const auto from = clock::now();
        const io_lock lock(page.segment);
        longest_s = std::max(longest_s, std::chrono::duration<double>(clock::now() - from).count());
        if (!lock.held()) break;
        page.raised = page.raised + 1;
        ++page.of[self].taken;
    }
    page.of[self].longest_s = longest_s;
}

}  // namespace

int main(int argc, char** argv) {
    attack run("lock", argc, argv, 100'000'000);
    void* const memory = mmap(nullptr, sizeof(shared_page), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return 1;
    auto& page = *new (memory) shared_page{};
    sem_init(&page.segment.lock, 0, 1);
    const pid_t other = fork();
    take_often(page, other == 0, run.wanted / 2);
    if (other == 0) _exit(0);
    int status = -1;
    if (waitpid(other, &status, 0) != other || status != 0) run.find("the other process has died");
    run.done = page.of[0].taken + page.of[1].taken;
    const double longest_s = std::max(page.of[0].longest_s, page.of[1].longest_s);
    if (run.done != run.wanted / 2 * 2)
        run.find("only " + std::to_string(run.done) + " were taken");
    if (page.raised != run.done)
        run.find("both held it: " + std::to_string(run.done - page.raised) + " times");
    if (longest_s > longest_wait_s) run.find("one waited for too long");
    return run.finish("acquisitions", "longest wait " + std::to_string(longest_s * 1000) + " ms");
}
