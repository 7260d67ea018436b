// quorin-modbus's command line.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "bridges/modbus_server.h"

struct modbus_options {
    int ident = 0;
    /// Prints the map, and serves nothing.
    bool map = false;
    std::string listen = "127.0.0.1";
    int port = 1502;
    modbus_service service;
    /// What --help or --version prints; nothing else is to be done then.
    std::optional<std::string> answer = {};
};

/// Understands the words after the program's name. Throws `misuse` with one French line.
[[nodiscard]] modbus_options read_options(const std::vector<std::string>& words);
