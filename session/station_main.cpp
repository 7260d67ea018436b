#include "session/station_main.h"

#include "ioshare/io_printable.h"
#include "ioshare/link_capacity.h"
#include "session/end_signals.h"
#include "session/failure.h"
#include "session/messages.h"

namespace {

std::vector<std::string> as_vector(name_span names) { return {names.begin(), names.end()}; }

void check_names(const station_model& model) {
    const std::string problem =
        link_capacity_problem(as_vector(model.inputs()), as_vector(model.outputs()));
    if (!problem.empty()) throw refusal(problem);
}

std::vector<station_fault> understood_faults(const station_model& model,
                                             const std::vector<std::string>& texts) {
    std::vector<station_fault> faults;
    for (const std::string& text : texts) {
        std::string reason;
        const auto fault = parse_fault(text, model, reason);
        if (!fault) throw misuse("--fault " + io_printable(reason));
        faults.push_back(*fault);
    }
    return faults;
}

void tell(const std::string& program, const failure& why) {
    message_stream messages(program);
    std::size_t begin = 0, end;
    while ((end = why.why.find('\n', begin)) != std::string::npos) {
        messages.say(why.why.substr(begin, end - begin));
        begin = end + 1;
    }
    messages.say(why.why.substr(begin));
}

}  // namespace

int program_main(const std::string& program, closed_stream closed,
                 const std::function<int()>& work) {
    open_closed_streams(closed);
    outlive_full_files();
    try {
        return work();
    } catch (const failure& why) {
        tell(program, why);
        return static_cast<int>(why.status);
    }
}

int serve_station(station_model& model, const session_options& options, const std::string& program,
                  const runner_choice& choose_runner) {
    check_names(model);
    const std::vector<station_fault> faults = understood_faults(model, options.faults);
    const session_runner runner = choose_runner ? choose_runner(model, options) : run_headless;
    message_stream messages(program);
    end_signals::watch();
    live_session session(model, options, messages);
    for (const station_fault& each : faults)
        if (!session.set_fault(each)) throw misuse("--fault " + each.name);
    return runner(session);
}

int station_main(int argc, char** argv, command_line line,
                 const std::function<std::unique_ptr<station_model>()>& make_model,
                 const runner_choice& choose_runner) {
    return program_main(line.program, closed_stream::swallows, [&] {
        session_options options;
        add_session_options(line, options);
        const command_words words = read_command_line(line, {argv + 1, argv + argc});
        if (words.answer) {
            print_at_once(*words.answer);
            return 0;
        }
        check_together(options);
        return serve_station(*make_model(), options, line.program, choose_runner);
    });
}
