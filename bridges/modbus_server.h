// A link served as Modbus TCP: many clients, one thread, nobody waited for.
//
// Discrete input i is input i and coil i is output i, 1 for exactly 1; input registers are those of
// `map_register`. docs/modbus_en.md has the whole map and what each refusal is.
#pragma once
#include <chrono>
#include <functional>
#include <list>
#include <string>

#include "bridges/link_watch.h"
#include "bridges/listening_socket.h"
#include "bridges/modbus_answers.h"
#include "bridges/modbus_client.h"
#include "ioshare/io_observer.h"

/// How a link is served.
struct modbus_service {
    /// Whether clients may write; the link is then open for writing.
    bool control = false;
    /// For how long a client that commands may be silent.
    double safe_after_s = 2;
    /// How many there may be at once.
    int clients = 8;
};

/// What a server says: one French line, without an end of line.
using modbus_words = std::function<void(const std::string&)>;

/// Why a server has ended.
enum class modbus_end { asked, session_over, guard_gone };

class modbus_server {
public:
    /// Serves segment `ident`, on which `link` is open, to whom `door` lets in. All of them outlive
    /// this object. Throws `std::bad_alloc`.
    modbus_server(int ident, io_observer& link, const listening_socket& door,
                  const modbus_service& service, modbus_words say);
    /// With control, every coil becomes 0, once it has run.
    ~modbus_server();
    modbus_server(const modbus_server&) = delete;
    modbus_server& operator=(const modbus_server&) = delete;

    /// Serves until descriptor `stop` can be read, until 2 s after the session's end, or until
    /// nobody holds the other end of `guard` (-1: there is none).
    [[nodiscard]] modbus_end run(int stop, int guard);

private:
    using clock = std::chrono::steady_clock;

    void let_in(clock::time_point now);
    void exchange(modbus_client& client, short events, clock::time_point now);
    void answer(modbus_client& client, clock::time_point now);
    void fill_table(clock::time_point now);
    void carry_out(coil_range written);
    void look_after_commander(clock::time_point now);
    void drop_clients(clock::time_point now);
    void all_coils_off();
    [[nodiscard]] bool late(const modbus_client& client, clock::time_point now) const;
    [[nodiscard]] clock::duration patience_with(const modbus_client& client) const;
    [[nodiscard]] int wait_ms(clock::time_point now) const;

    io_observer& link_;
    const listening_socket& door_;
    const modbus_service service_;
    const modbus_words say_;
    const clock::duration safe_after_;
    modbus_answers answers_;
    link_watch watch_;
    std::list<modbus_client> clients_;
    const modbus_client* commander_ = nullptr;  // The one that wrote last, as long as it is heard.
    bool has_run_ = false;
    bool door_shut_ = false;  // Until the next look, for want of descriptors.
};
