// Observers and clients on segments that no simulator makes, each under a hand that goes on writing
// there. The clients live in child processes, so that one that crashes is told. Linked with
// --wrap=exit: a client that refuses its segment would end its process.
//
//     build/asan/bin/soak_segments 1000000
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csetjmp>
#include <sstream>

#include "bench/soak/guarded_attach.h"
#include "bench/soak/hostile_segment.h"
#include "ioshare/io_client.h"
#include "ioshare/io_observer.h"
#include "tests/support/files.h"

namespace {

/// Where a client that refuses goes on.
std::jmp_buf refused;
bool may_refuse = false;

}  // namespace

extern "C" {
[[noreturn]] void __real_exit(int status);

[[noreturn]] void __wrap_exit(int status) {
    if (may_refuse && status == 1) std::longjmp(refused, 1);
    __real_exit(status);
}
}

namespace {

void observe(attack& run, long& opened) {
    hostile_segment segment(run);
    io_observer observer(segment.ident(), run.one_in(2) ? io_access::read : io_access::write);
    if (observer.problem().empty() != (segment.size() >= io_segment_size))
        run.find("size " + std::to_string(segment.size()));
    opened += observer.problem().empty();
    for (std::size_t looks = run.below(4); looks > 0; --looks) {
        observer.look();
        static_cast<void>(observer.session_over());
        for (const std::string& name : asked_names) {
            static_cast<void>(observer.find(name));
            observer.write(name, static_cast<std::int32_t>(run.random()));
        }
        observer.write(static_cast<int>(run.random()), 1);
        segment.disturb(run);
    }
}

/// What a child tells: how far it has come, also when it is ended.
struct progress {
    long begun, taken, refused;
};

void be_client(attack& run, hostile_segment& segment) {
    segment.open_lock();
    IOsharemem_client client(segment.ident());
    std::int64_t last = 0;
    for (std::size_t i = 1 + run.below(3); i > 0; --i) {
        auto& shared = *reinterpret_cast<io_segment*>(segment.bytes());
        // Without a publication it would sleep.
        const std::int64_t clock = shared.inputs_clock;
        if (clock > last || clock < 0) client.receive();
        last = clock;
        for (const std::string& name : asked_names) {
            client.input_is_set(name);
            client.setreset_output(name, static_cast<int>(run.random()));
        }
        client.outputs_refresh();
        segment.disturb(run);
        segment.open_lock();
    }
    shmdt(client.segment);
}

/// In the child: many clients.
[[noreturn]] void be_clients(attack& run, progress& told, const std::string& said) {
    const int errors = open(said.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    dup2(errors, STDERR_FILENO);
    alarm(120);
    for (int i = 0; i < 2000 && told.begun < run.wanted; ++i) {
        if (ftruncate(STDERR_FILENO, 0) != 0) _exit(3);
        hostile_segment segment(run);
        ++told.begun;
        if (setjmp(refused) == 0) {
            may_refuse = true;
            be_client(run, segment);
            ++told.taken;
        } else {
            ++told.refused;
            detach_all_but(segment.bytes());
        }
        may_refuse = false;
    }
    _exit(0);
}

long attack_clients(attack& run) {
    const temporary_folder folder("quorin_soak_");
    const std::string said = folder / "said";
    void* const memory =
        mmap(nullptr, sizeof(progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& told = *static_cast<progress*>(memory);
    for (; told.begun < run.wanted && run.goes_on(); run.done = told.begun) {
        run.random.discard(1000);
        const pid_t child = fork();
        if (child == 0) be_clients(run, told, said);
        int status = -1;
        waitpid(child, &status, 0);
        if (status != 0)
            run.find("a client ended with " + std::to_string(status) + ": " +
                     bytes_of(said).substr(0, 2000));
    }
    if (told.taken + told.refused + run.found() < told.begun) run.find("clients are missing");
    return told.taken;
}

}  // namespace

int main(int argc, char** argv) {
    attack run("segments", argc, argv, 1'000'000);
    long opened = 0;
    for (; run.goes_on(); ++run.done) observe(run, opened);
    run.done = 0;
    const long taken = attack_clients(run);
    std::ostringstream figures;
    figures << "each for an observer, which opened " << opened << ", and for a client, which took "
            << taken;
    return run.finish("segments", figures.str());
}
