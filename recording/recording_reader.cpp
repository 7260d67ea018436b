#include "recording/recording_reader.h"

#include <utility>

#include "recording/recorded_text.h"
#include "session/failure.h"

namespace {

const event_row head_row = {"ms", "genre", "nom", "valeur"};

}  // namespace

recording_reader::recording_reader(std::string name, std::streambuf& bytes)
    : name_(std::move(name)), rows_(bytes) {
    try {
        read_head();
    } catch (const recording_problem& problem) {
        refuse(problem);
    }
}

bool recording_reader::restart() {
    if (!rows_.restart()) return false;
    const recording_head before = std::exchange(head_, {});
    state_ = {};
    whole_ = false;
    try {
        read_head();
    } catch (const recording_problem& problem) {
        refuse(problem);
    }
    if (head_.inputs != before.inputs || head_.outputs != before.outputs)
        throw refusal(name_ + ": le fichier a changé");
    return true;
}

void recording_reader::refuse(const recording_problem& problem) const {
    throw refusal(
        recorded_name(name_ + ": ligne " + std::to_string(problem.line) + ": " + problem.why));
}

// Whether there is one. A row that was cut off is none.
bool recording_reader::read_next() {
    next_.reset();
    event_row row;
    if (!rows_.next(row)) return false;
    next_ = event_of_row(row, rows_.line());
    return true;
}

void recording_reader::read_head() {
    event_row first;
    if (!rows_.next(first) || first != head_row)
        throw recording_problem{1, "\"ms,genre,nom,valeur\" est attendu"};
    head_builder builder(head_);
    while (read_next() && builder.take(*next_)) {
    }
    if (!next_ && !builder.complete())
        throw recording_problem{rows_.line(), "le fichier est coupé dans le premier bloc"};
    for (recorded_event& each : head_.events) each.index = head_.index_of(each);
    state_.begin(head_);
    if (next_) admit();
}

void recording_reader::admit() {
    state_.take(*next_);
    next_->index = head_.index_of(*next_);
}

recorded_event recording_reader::take() {
    recorded_event taken = std::move(*next_);
    try {
        whole_ = state_.over();
        if (read_next())
            admit();
        else if (whole_ && rows_.cut())
            throw recording_problem{rows_.line(), "rien ne suit la fin"};
    } catch (const recording_problem& problem) {
        refuse(problem);
    }
    return taken;
}
