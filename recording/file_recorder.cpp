#include "recording/file_recorder.h"

file_recorder::file_recorder(recording_kind kind, const std::string& path, file_backlog backlog)
    : file_(path, backlog), form_(new_recording(kind)) {}

void file_recorder::read(std::span<const station_event> events) {
    if (events.empty()) return;
    const std::string text = form_->text_of(events);
    if (begun_)
        file_.append(text);
    else
        early_ += text;
}

void file_recorder::begin() {
    begun_ = true;
    file_.begin();
    file_.append(early_);
    early_.clear();
}
