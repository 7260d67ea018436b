// The segment that a session serves: made so that nothing of it is left, however the program ends.
#pragma once
#include "ioshare/io_server.h"
#include "session/station_model.h"

/// Those that hold a served segment without being clients: the simulator and its supervisor.
inline constexpr unsigned long station_holders = 2;

/// A server of these names whose segment is marked for removal as soon as it exists: clients still
/// attach by its identifier while someone holds it, and the system frees it when the last one lets
/// go. Never on identifier 0, which clients refuse.
/// Throws `refusal` when the system has no room for one.
[[nodiscard]] IOsharemem_server make_station_server(name_span inputs, name_span outputs);

/// Whether nobody holds segment `ident` but the session and so many others.
[[nodiscard]] bool held_by_no_more_than(int ident, unsigned long others);
