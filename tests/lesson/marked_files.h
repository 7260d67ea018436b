// Recordings that are marked as files.
#pragma once
#include <gtest/gtest.h>

#include <string>

#include "programs/quorin_lesson/marking.h"
#include "tests/support/files.h"

class Marking : public testing::Test {
protected:
    marked_recording marked(const exercise& task, const std::string& recording) {
        write_bytes(files / "a.csv", recording);
        marked_recording found = mark_recording(task, files / "a.csv");
        const std::string folder = files / "";
        if (found.refusal.rfind(folder, 0) == 0) found.refusal.erase(0, folder.size());
        return found;
    }

    const temporary_folder files;
};
