// Which address is which signal: the map that a Modbus server of a link has, and its names.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "ioshare/io_observer.h"

/// The input registers, in the order of their addresses.
enum class map_register { publications_high, publications_low, age, state, count };

/// One address.
struct map_row {
    std::string_view table;  ///< "entree_discrete", "bobine" or "registre_entree"
    int address;             ///< From 0.
    std::string name;        ///< As the link has it: any bytes but NUL.
};

/// Every address: discrete input i is input i, coil i is output i, then the input registers.
[[nodiscard]] std::vector<map_row> modbus_map(const io_observer& link);

/// The rows as CSV (RFC 4180, with line feeds) under the head "table,adresse,nom". Control bytes of
/// names are shown as `\xNN`; a name with a comma or a quote is quoted.
[[nodiscard]] std::string csv_of(const std::vector<map_row>& map);
