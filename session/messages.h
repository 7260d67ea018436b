// What a program says on its standard streams while others depend on its pace.
#pragma once
#include <unistd.h>

#include <string>

/// Lines on the standard error stream, each written whole or not at all. A stream that takes
/// nothing at the moment, a full pipe or a terminal that stands still, loses the line rather than
/// holding the program up; the next one that gets through is preceded by a line that says how many
/// were lost. Of a line that a terminal took in part the rest comes with the next.
class message_stream {
public:
    /// `program` begins the line that tells the number of lost ones.
    explicit message_stream(std::string program) : program_(std::move(program)) {}
    /// The name with which `say` begins.
    const std::string& program() const { return program_; }
    /// Writes `text` and an end of line, 4096 bytes at most.
    void line(const std::string& text);
    /// The same after the program's name and a colon.
    void say(const std::string& text) { line(program_ + ": " + text); }

private:
    std::string program_;
    // What a terminal has not taken yet of the last line.
    std::string unfinished_;
    int lost_ = 0;
};

/// Writes `text` on the standard output, or on the error stream, at once. Throws `refusal` when it
/// takes nothing, or not all of it within a second in the case of a full pipe or a slow terminal.
void print_at_once(const std::string& text, int stream = STDOUT_FILENO);

/// Prints `text` on the standard output, for as long as its reader takes. Throws `refusal` when it
/// takes nothing. From the first call on a reader that has gone is such a failure, and no signal.
void print_patiently(const std::string& text);
