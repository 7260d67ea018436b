// What the link's tests share: the bytes of a server's segment, and its removal at the end.
#pragma once
#include <gtest/gtest.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "ioshare/io_client.h"
#include "ioshare/io_server.h"
#include "tests/support/programs.h"

/// A private segment of any size, with raw access; detached and removed at the end.
class raw_segment {
public:
    explicit raw_segment(std::size_t size = 4561) : ident(shmget(IPC_PRIVATE, size, 0600)) {
        bytes = static_cast<unsigned char*>(shmat(ident, nullptr, 0));
    }
    ~raw_segment() {
        shmdt(bytes);
        shmctl(ident, IPC_RMID, nullptr);
    }
    raw_segment(const raw_segment&) = delete;
    raw_segment& operator=(const raw_segment&) = delete;

    int ident;
    unsigned char* bytes;
};

template <typename number>
number number_at(const void* base, std::size_t offset) {
    number value;
    std::memcpy(&value, static_cast<const char*>(base) + offset, sizeof value);
    return value;
}

inline std::string bytes_at(const void* base, std::size_t offset, std::size_t length) {
    return {static_cast<const char*>(base) + offset, length};
}

/// A server whose segment goes when the test ends. Never on identifier 0, which clients refuse.
class test_server {
public:
    explicit test_server(const std::list<std::string>& inputs = {"te", "ts", "vb"},
                         const std::list<std::string>& outputs = {"RENT", "SORT"}) {
        server.emplace(inputs, outputs);
        if (server->ident != 0) return;
        const IOsharemem_server first = *server;
        server.emplace(inputs, outputs);
        remove(first);
    }
    ~test_server() { remove(*server); }
    test_server(const test_server&) = delete;
    test_server& operator=(const test_server&) = delete;

    IOsharemem_server* operator->() { return &*server; }
    const void* bytes() const { return server->segment; }

private:
    static void remove(const IOsharemem_server& one) {
        shmdt(one.segment);
        shmctl(one.ident, IPC_RMID, nullptr);
    }
    std::optional<IOsharemem_server> server;
};

/// A client on that segment, its report line kept off the test's output.
inline IOsharemem_client quiet_client(int ident) {
    testing::internal::CaptureStderr();
    IOsharemem_client client(ident);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ident_mem=" + std::to_string(ident) + "\n");
    return client;
}

/// Detaches what a client attached: tests make many in one process.
struct detach_at_end {
    IOsharemem_client& client;
    ~detach_at_end() { shmdt(client.segment); }
};
