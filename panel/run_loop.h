// The panel's run loop, which joins the form to the shared I/O segment until the session ends or
// the window is closed.
#pragma once
#include <cstdint>

class IOsharemem_client;

/// One entry for each output of the panel, 0 at program start. It is there for callers: the panel
/// itself takes the outputs' states from its buttons, and neither reads nor writes this table.
extern std::int32_t etat_sorties[13];

/// Sets the 13 entries of etat_sorties to 0.
void reset_outputs();

/// Shows the panel and runs it on `client`'s segment. Returns when the simulator has announced the
/// end of the session, after the user has dismissed the message that says so, or, silently, when
/// the user has closed the window.
///
/// The toolkit takes its standard options (-display, -scheme, ...) from the `argc` words of `argv`,
/// removing those it knows. Inputs are shown at each publication: red for exactly 1, blue for
/// anything else. All 13 outputs are written each time a button has been used, by mouse or
/// keyboard, and not before. A pass takes about 110 ms.
///
/// A `client` of all-ones, the error value of shmat(), prints "probleme sur shmat() en mode client"
/// and an empty line on the standard error stream, and returns.
void activation(int argc, char** argv, IOsharemem_client* client);
