#include "programs/zk4sim/task.h"

#include "lesson/bundled_exercises.h"
#include "lesson/exercise_file.h"
#include "session/failure.h"
#include "workcell/workcell_model.h"

exercise session_task::read() const {
    return read_exercise_file(exercise_file_called(options_.exercise), workcell_model(0));
}

std::unique_ptr<station_model> session_task::begin() {
    task_ = read();
    examiner_.emplace(*task_, options_.in);
    const exercise_station& station = task_->station;
    return std::make_unique<workcell_model>(station.seed,
                                            workcell_supplies{station.bases, station.parts});
}

session_runner session_task::given_to(session_runner run) {
    if (!examiner_) return run;
    return [this, run](live_session& session) {
        for (const station_fault& each : task_->station.faults)
            if (!session.set_fault(each)) throw refusal(each.name + ": panne impossible");
        session.set_examiner(*examiner_);
        return run(session);
    };
}

std::optional<std::vector<station_fault>> session_task::hidden_faults() const {
    if (options_.exercise.empty()) return std::nullopt;
    return read().station.hidden_faults;
}
