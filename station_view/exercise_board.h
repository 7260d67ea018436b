// What the window tells of an exercise, decided without a display: lines, each with a sign.
#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "lesson/judge.h"

/// What a line is about, or how it stands. Each is drawn with a sign of its own, whatever the
/// colours.
enum class board_sign {
    /// Text, and the heading of a part.
    text,
    heading,
    /// A goal, or a count, that still has to come; the goal whose turn it is, and one that can only
    /// be late.
    to_come,
    current,
    overdue,
    /// It counts; it came too late; it did not come at all, or is wrong.
    reached,
    too_late,
    missed,
    /// As it should be up to now.
    kept,
    /// What must not happen: it did not, it did.
    not_happened,
    happened,
    count
};

/// One line of the board.
struct board_line {
    /// What is drawn before the text; none for `text`.
    board_sign sign = board_sign::text;
    /// UTF-8, in the window's language; broken into lines where there is no room.
    std::string text = {};
    /// Short, beside the text: a time, what is left of one, points.
    std::string note = {};
    bool operator==(const board_line&) const = default;
};

/// How the exercise came out; `none` while it goes on.
enum class board_result { none, passed, failed };

/// The whole board, its head and its lines: drawn again when it differs from the last one.
struct exercise_board {
    /// The exercise's, one line.
    std::string title;
    /// "3 / 15 points"; what is left of the exercise's time, "reste 58 s", or at its end whether
    /// it is passed.
    std::string points, time;
    /// Shown by a sign and a colour in the head.
    board_result result = board_result::none;
    /// What is judged, in parts with headings.
    std::vector<board_line> lines;
    bool operator==(const exercise_board&) const = default;
};

/// The board of an exercise that stands so. `answer` is the last one that was given to its
/// diagnosis, "b2s=stuck1 te=stuck0"; empty: none. Hidden faults, and whether an answer is right,
/// are told once it is over.
[[nodiscard]] exercise_board board_of(const exercise& task, const exercise_standing& standing,
                                      const std::string& answer, language in);

/// What does not change: the paragraphs of the task, and the faults that are told.
[[nodiscard]] std::vector<board_line> task_of_board(const exercise& task, language in);

/// The place of the line that wants to be seen, the current goal's; -1: there is none.
[[nodiscard]] int current_line(const exercise_board& board);

/// A text in lines no wider than `room`, broken at blanks, and within a word that is wider by
/// itself. `width` measures, and finds no character narrower than 1. At least one line.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, int room,
                                               const std::function<int(std::string_view)>& width);
