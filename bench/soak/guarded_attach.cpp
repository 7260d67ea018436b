// Every attachment of the program it is linked into, so that a byte read behind a segment's end is
// seen: the system gives whole pages, of which the sanitizer is told what is out of bounds. Linked
// with --wrap=shmat and --wrap=shmdt.
#include "bench/soak/guarded_attach.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <cstddef>
#include <map>

#include "tests/support/sanitizers.h"

#ifdef QUORIN_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) \
    (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) \
    (static_cast<void>(address), static_cast<void>(size))
#endif

extern "C" {
void* __real_shmat(int ident, const void* address, int flags);
int __real_shmdt(const void* address);

// What programs never give back is no finding here: they make thousands of clients.
const char* __asan_default_options() { return "detect_leaks=0"; }
}

namespace {

struct extent {
    std::size_t used, whole;
};

std::map<const void*, extent>& attached() {
    static std::map<const void*, extent> all;
    return all;
}

}  // namespace

extern "C" void* __wrap_shmat(int ident, const void* address, int flags) {
    void* const got = __real_shmat(ident, address, flags);
    shmid_ds status{};
    if (got == reinterpret_cast<void*>(-1) || shmctl(ident, IPC_STAT, &status) != 0) return got;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const extent here{status.shm_segsz, (status.shm_segsz + page - 1) / page * page};
    ASAN_POISON_MEMORY_REGION(static_cast<char*>(got) + here.used, here.whole - here.used);
    attached()[got] = here;
    return got;
}

extern "C" int __wrap_shmdt(const void* address) {
    if (const auto found = attached().find(address); found != attached().end()) {
        ASAN_UNPOISON_MEMORY_REGION(address, found->second.whole);
        attached().erase(found);
    }
    return __real_shmdt(address);
}

void detach_all_but(const void* kept) {
    const std::map<const void*, extent> all = attached();
    for (const auto& [address, size] : all)
        if (address != kept) __wrap_shmdt(address);
}
