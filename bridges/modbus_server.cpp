#include "bridges/modbus_server.h"

#include <poll.h>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "bridges/modbus_map.h"

namespace {

using namespace std::chrono_literals;

// The link is looked at so often when nobody asks: the age counts tenths of a second.
constexpr auto look_pause = 50ms;
// Without a whole request for so long a client is dropped.
constexpr auto request_limit = 5s;
// An ended session is served for so long.
constexpr auto served_after_end = 2s;
// So many connections are let in, or refused, between two rounds of requests.
constexpr int let_in_at_once = 16;

std::string seconds_text(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g s", seconds);
    return text;
}

/// How many signals of a direction there are.
int count_of(const io_observer& link, io_direction direction) {
    return static_cast<int>(std::ranges::count(link.signals(), direction, &io_signal::direction));
}

}  // namespace

modbus_server::modbus_server(int ident, io_observer& link, const listening_socket& door,
                             const modbus_service& service, modbus_words say)
    : link_(link),
      door_(door),
      service_(service),
      say_(std::move(say)),
      safe_after_(std::chrono::duration_cast<clock::duration>(
          std::chrono::duration<double>(service.safe_after_s))),
      answers_(link.outputs(), count_of(link, io_direction::input),
               static_cast<int>(map_register::count)),
      watch_(ident, link, clock::now()) {}

modbus_server::~modbus_server() {
    if (service_.control && has_run_) all_coils_off();
}

modbus_end modbus_server::run(int stop, int guard) {
    std::vector<pollfd> wanted;
    has_run_ = true;
    for (;;) {
        wanted = {
            {stop, POLLIN, 0}, {guard, 0, 0}, {door_shut_ ? -1 : door_.descriptor(), POLLIN, 0}};
        for (const modbus_client& each : clients_)
            wanted.push_back({each.socket(), each.wanted(), 0});
        poll(wanted.data(), wanted.size(), wait_ms(clock::now()));
        if (wanted[0].revents != 0) return modbus_end::asked;
        if (wanted[1].revents != 0) return modbus_end::guard_gone;
        const auto now = clock::now();
        auto events = wanted.begin() + 3;
        for (modbus_client& each : clients_) exchange(each, (events++)->revents, now);
        look_after_commander(now);
        drop_clients(now);
        door_shut_ = false;
        if (wanted[2].revents != 0) let_in(now);
        link_.look();
        watch_.look(clock::now());
        if (watch_.ended() && now >= *watch_.ended() + served_after_end)
            return modbus_end::session_over;
    }
}

int modbus_server::wait_ms(clock::time_point now) const {
    auto next = now + look_pause;
    for (const modbus_client& each : clients_) {
        if (!each.request().empty()) return 0;
        next = std::min(next, each.last_request() + patience_with(each));
    }
    if (commander_) next = std::min(next, commander_->last_request() + safe_after_);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - now).count();
    return static_cast<int>(std::max<long>(left, 0));
}

void modbus_server::let_in(clock::time_point now) {
    for (int i = 0; i < let_in_at_once; ++i) {
        listening_socket::connection next = door_.take();
        door_shut_ = next.no_room;
        if (next.socket < 0) return;
        clients_.emplace_back(next.socket, std::move(next.name), now);
        if (clients_.size() > static_cast<std::size_t>(service_.clients)) clients_.pop_back();
    }
}

/// One request at most, so that who asks without end holds nobody up.
void modbus_server::exchange(modbus_client& client, short events, clock::time_point now) {
    client.send();
    if (events != 0) client.receive();
    if (!client.request().empty()) answer(client, now);
}

void modbus_server::answer(modbus_client& client, clock::time_point now) {
    fill_table(now);
    const modbus_answer made = answers_.to(client.request(), service_.control);
    if (made.written.count > 0) {
        carry_out(made.written);
        commander_ = &client;
    }
    client.answer(made.bytes, now);
}

void modbus_server::fill_table(clock::time_point now) {
    link_.look();
    watch_.look(now);
    const auto inputs = answers_.discrete_inputs(), coils = answers_.coils();
    auto input = inputs.begin(), coil = coils.begin();
    for (const io_signal& each : link_.signals())
        *(each.direction == io_direction::input ? input++ : coil++) = each.value == 1;
    const auto registers = answers_.input_registers();
    const auto set = [&](map_register which, std::uint64_t value) {
        registers[static_cast<std::size_t>(which)] = static_cast<std::uint16_t>(value);
    };
    const auto publication = static_cast<std::uint64_t>(link_.publication());
    set(map_register::publications_high, publication >> 16);
    set(map_register::publications_low, publication);
    set(map_register::age, watch_.age_tenths(now));
    set(map_register::state, static_cast<std::uint64_t>(watch_.state()));
}

void modbus_server::carry_out(coil_range written) {
    for (int i = written.first; i < written.first + written.count; ++i)
        link_.write(i, answers_.coils()[static_cast<std::size_t>(i)]);
}

void modbus_server::look_after_commander(clock::time_point now) {
    if (!commander_) return;
    const bool gone = commander_->over();
    if (!gone && now < commander_->last_request() + safe_after_) return;
    all_coils_off();
    say_(commander_->name() + ": " +
         (gone ? "parti" : "sans requête depuis " + seconds_text(service_.safe_after_s)) +
         ": les bobines valent 0");
    commander_ = nullptr;
}

/// The one that commands may be silent for as long as it commands.
modbus_server::clock::duration modbus_server::patience_with(const modbus_client& client) const {
    const clock::duration limit = request_limit;
    return &client == commander_ ? std::max(limit, safe_after_) : limit;
}

bool modbus_server::late(const modbus_client& client, clock::time_point now) const {
    return now >= client.last_request() + patience_with(client);
}

void modbus_server::drop_clients(clock::time_point now) {
    clients_.remove_if([&](const modbus_client& each) { return each.over() || late(each, now); });
}

void modbus_server::all_coils_off() {
    for (int i = 0; i < link_.outputs(); ++i) link_.write(i, 0);
}
