// quorin: the manual control panel of the ZK4 station,
// started by a simulator on its shared I/O segment.
#include <cstdlib>
#include <iostream>
#include <string>

#include "ioshare/io_client.h"
#include "ioshare/io_streams.h"
#include "panel/run_loop.h"

namespace {

// The call that it shows, with a machine and a socket, is not one that the program accepts.
constexpr char help[] =
    "\n"
    "        quorin: controle quorin du ZK4\n"
    "Les auteurs de quorin\n"
    "\n"
    "   syntaxe:\n"
    "\n"
    "         quorin <nom_machine> <numero_socket>\n"
    "\n"
    "         OU quorin -h\n"
    "\n";

constexpr char usage_error[] =
    "probleme de parametres\n"
    "syntaxe :\n"
    "\n"
    "   quorin -automemlink <ident_mem>\n"
    "\n"
    "   OU quorin -h\n"
    "\n";

void run_panel(int argc, char** argv) {
    // A missing identifier counts as 0, which the client refuses.
    IOsharemem_client client(argc > 2 ? std::atoi(argv[2]) : 0);
    activation(argc, argv, &client);
}

}  // namespace

int main(int argc, char** argv) {
    // The display's connection must not become the stream that reports go to.
    open_closed_streams(closed_stream::swallows);
    outlive_full_files();
    const std::string form = argc > 1 ? argv[1] : "";
    if (form == "-h") {
        std::cout << help;
        std::exit(0);
    }
    if (form != "-automemlink") {
        std::cerr << usage_error;
        std::exit(1);
    }
    run_panel(argc, argv);
    std::exit(0);
}
