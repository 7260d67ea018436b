// The control socket of a session: requests from scripts of the same user, one a connection.
//
// Nobody who connects can hold the session up: nothing here waits, a client that is slow, silent or
// wrong is answered or dropped by itself. docs/quorin_io.md describes the protocol.
#pragma once
#include <chrono>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "session/failure.h"

/// What a request is answered.
struct control_answer {
    /// With which the client is to end.
    exit_status status;
    /// What the client prints; empty, or lines that end with an end of line.
    std::string text;
};

class control_socket {
public:
    /// Real time.
    using moment = std::chrono::steady_clock::time_point;
    /// Carries out a request, without its end of line. Nothing: it is answered later, by
    /// `answer_waiting`.
    using handler = std::function<std::optional<control_answer>(const std::string& request)>;

    /// Listens for segment `ident`, in the user's folder of control sockets, and removes what dead
    /// sessions left there. Throws `refusal` when that cannot be, or the folder is not safe.
    explicit control_socket(int ident);
    /// Removes it; whoever still waits for an answer sees the connection close.
    ~control_socket();
    control_socket(const control_socket&) = delete;
    control_socket& operator=(const control_socket&) = delete;

    /// Readable when there is something to do.
    int descriptor() const { return events_; }
    /// When the next silent client is to be dropped, if there is one.
    [[nodiscard]] std::optional<moment> next_deadline() const;
    /// Takes what has come, answers requests, drops those who took too long. Bounded work.
    void service(moment now, const handler& carry_out);

    /// Whether a request still has no answer: one that waits for steps.
    [[nodiscard]] bool anybody_waiting() const;
    /// Answers all who wait.
    void answer_waiting(moment now, const control_answer& answer);

private:
    /// Reading its request, waiting for its answer, or answered and to be read to its end.
    enum class stage { reading, waiting, answered };
    struct connection {
        int descriptor;
        moment deadline;
        std::string received = {};
        stage at = stage::reading;
    };
    using connections = std::list<connection>;

    void listen_for(int descriptor, unsigned events, int change) const;
    void accept_clients(moment now);
    void make_room();
    void take_bytes(connection& client, bool gone, moment now, const handler& carry_out);
    void take_request(connection& client, moment now, const handler& carry_out, bool at_end);
    void answer(connection& client, moment now, const control_answer& answer);
    void drop(connections::iterator client);

    std::string path_;
    int events_ = -1, listener_ = -1;
    connections clients_;
};
