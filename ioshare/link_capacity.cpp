#include "ioshare/link_capacity.h"

#include "ioshare/io_segment.h"

std::string link_capacity_problem(const std::vector<std::string>& inputs,
                                  const std::vector<std::string>& outputs) {
    for (const auto* names : {&inputs, &outputs}) {
        if (names->size() > io_names) {
            return std::to_string(names->size()) + " noms: la liaison en porte " +
                   std::to_string(io_names);
        }
        for (const std::string& name : *names) {
            if (name.size() >= io_name_size) {
                return "nom trop long pour la liaison (" + std::to_string(io_name_size - 1) +
                       " octets): " + name;
            }
        }
    }
    return "";
}
