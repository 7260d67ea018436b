// A control socket in a folder of the test's own, served step by step at times that the test says.
#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "session/control_socket.h"
#include "tests/support/control_client.h"
#include "tests/support/runtime_folder.h"

struct served_socket {
    using moment = control_socket::moment;

    /// Does all that there is to do at `ms` after the start.
    void serve(int ms = 0) {
        const moment now = start + std::chrono::milliseconds(ms);
        for (int i = 0; i < 10'000; ++i) {
            pollfd events{socket.descriptor(), POLLIN, 0};
            const std::optional<moment> deadline = socket.next_deadline();
            if (poll(&events, 1, 0) == 0 && !(deadline && *deadline <= now)) return;
            socket.service(now, carry_out);
        }
        ADD_FAILURE() << "it never comes to rest";
    }
    /// What a client that sends these bytes is answered.
    std::string answer_to(const std::string& bytes) {
        const control_client client(control_socket_path(ident));
        client.send_bytes(bytes);
        serve();
        return client.heard() ? client.answer(0).value_or("still open") : "no answer";
    }

    static constexpr int ident = 12;
    runtime_folder folder;
    control_socket socket{ident};
    const moment start = std::chrono::steady_clock::now();
    std::vector<std::string> requests;  ///< All that were carried out.
    control_socket::handler carry_out = [this](const std::string& request) {
        requests.push_back(request);
        return control_answer{exit_status::done, "done: " + request + "\n"};
    };
};
