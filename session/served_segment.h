// The segment that a session serves: made so that nothing of it is left, however the program ends.
#pragma once
#include <list>
#include <string>

#include "ioshare/io_server.h"

/// Those that hold a served segment without being clients: the simulator and its supervisor.
inline constexpr unsigned long station_holders = 2;

/// As the link's server takes names; index 0 first.
using name_list = std::list<std::string>;

/// A server of these names whose segment is marked for removal as soon as it exists: clients still
/// attach by its identifier while someone holds it, and the system frees it when the last one lets
/// go. Never on identifier 0, which clients refuse.
/// Throws `refusal` when the system has no room for one.
[[nodiscard]] IOsharemem_server make_station_server(const name_list& inputs,
                                                    const name_list& outputs);
