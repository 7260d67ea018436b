// What the station's sensors and commands tell or do, in words.
#pragma once
#include <string>
#include <string_view>

#include "lesson/bilingual.h"

/// "1 quand le tiroir est rentré (RENT)."; empty for a name that the ZK4 station does not have.
[[nodiscard]] std::string signal_meaning(std::string_view name, language in);
