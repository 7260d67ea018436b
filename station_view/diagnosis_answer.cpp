#include "station_view/diagnosis_answer.h"

#include <algorithm>
#include <sstream>

std::vector<std::string> names_to_choose(const station_model& model) {
    std::vector<std::string> found;
    const auto add = [&](name_span names) {
        for (const std::string_view each : names)
            if (std::string name(each); std::ranges::find(found, name) == found.end() &&
                                        !kinds_to_choose(name, model).empty())
                found.push_back(std::move(name));
    };
    add(model.inputs());
    add(model.outputs());
    return found;
}

std::vector<fault_kind> kinds_to_choose(const std::string& name, const station_model& model) {
    std::vector<fault_kind> found;
    for (int i = 0; i < static_cast<int>(fault_kind::count); ++i)
        if (const auto kind = static_cast<fault_kind>(i); fault_fits(name, kind, model))
            found.push_back(kind);
    return found;
}

std::vector<station_fault> faults_in(const std::string& answer) {
    std::vector<station_fault> found;
    std::istringstream words(answer);
    for (std::string word; words >> word;) {
        const std::size_t equals = word.rfind('=');
        if (equals == std::string::npos) continue;
        if (const auto kind = fault_kind_called(word.substr(equals + 1)))
            found.push_back({word.substr(0, equals), *kind});
    }
    return found;
}

void add_to(std::vector<station_fault>& answer, const station_fault& fault) {
    const auto named = std::ranges::find(answer, fault.name, &station_fault::name);
    if (named == answer.end())
        answer.push_back(fault);
    else
        *named = fault;
}
