// A session kept in a file as it happens.
#pragma once
#include <memory>
#include <string>

#include "recording/background_file.h"
#include "recording/recording_form.h"
#include "session/session_follower.h"

/// The session never waits for the file, which is whole up to the last tenth of a second whatever
/// happens to the program.
class file_recorder : public event_reader, public session_follower {
public:
    /// Opens the file, as `background_file` does, and leaves what it holds until the session has
    /// begun. Throws `refusal`.
    file_recorder(recording_kind kind, const std::string& path, file_backlog backlog);

    void read(std::span<const station_event> events) override;
    void begin() override;
    void finish() override { file_.finish(); }
    [[nodiscard]] std::string trouble() override { return file_.trouble(); }
    /// Whether a part of the session is not in the file. After `begin`.
    [[nodiscard]] bool failed() const { return file_.failed(); }

private:
    background_file file_;
    std::unique_ptr<recording_form> form_;
    // What came before the beginning.
    std::string early_;
    bool begun_ = false;
};
