// The answer to an exercise's diagnosis while it is put together, without a display.
#pragma once
#include <string>
#include <vector>

#include "session/faults.h"

/// What can be named: sensors, then actuators, in the order of the link, each for which some kind
/// of fault fits.
[[nodiscard]] std::vector<std::string> names_to_choose(const station_model& model);
/// The kinds that fit a name, in their order.
[[nodiscard]] std::vector<fault_kind> kinds_to_choose(const std::string& name,
                                                      const station_model& model);

/// Faults written "b2s=stuck1 te=stuck0"; those that are not understood are left out.
[[nodiscard]] std::vector<station_fault> faults_in(const std::string& answer);

/// One fault a name: adding takes the place of what the name had.
void add_to(std::vector<station_fault>& answer, const station_fault& fault);
