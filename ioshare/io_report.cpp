#include "ioshare/io_report.h"

#include <cstdlib>
#include <iostream>

void io_refuse(const std::string& why) {
    std::cerr << "IOshare: erreur sur partage memoire\n" << why << "\n" << std::endl;
    std::exit(1);
}
