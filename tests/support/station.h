// A running zk4sim, as a test drives it: started, named by its identifier, commanded through
// quorin-io.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "tests/support/programs.h"

class station {
public:
    /// Starts zk4sim with these options, and waits for its identifier.
    explicit station(std::vector<std::string> options) {
        options.insert(options.begin(), built("zk4sim"));
        process = std::make_unique<program>(options);
        wait_until([this] { return process->out().find('\n') != std::string::npos; });
        const std::string line = process->out();
        ident = line.substr(line.find('=') + 1, line.find('\n') - line.find('=') - 1);
    }

    /// Runs quorin-io on its segment.
    outcome io(std::vector<std::string> words) const {
        words.insert(words.begin(), {built("quorin-io"), ident});
        return run_program(words);
    }
    std::string value(const std::string& name) const {
        const std::string out = io({"get", name}).out;
        return out.substr(0, out.find('\n'));
    }

    /// The last line that it wrote on the standard error stream.
    std::string summary() const {
        const std::string err = process->err();
        if (err.empty()) return err;
        const std::size_t before = err.rfind('\n', err.size() - 2);
        return err.substr(before == std::string::npos ? 0 : before + 1);
    }

    std::unique_ptr<program> process;
    std::string ident;
};
