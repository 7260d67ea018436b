// Somebody who goes along with a session from its beginning to its end: a recording, a replay.
#pragma once
#include <string>

class session_follower {
public:
    virtual ~session_follower() = default;
    /// The session has begun: from here on nothing keeps it from being one. The first block was
    /// told before. Throws `refusal` where it cannot go along; the session is over then.
    virtual void begin() {}
    /// The session is over, and all of it was told.
    virtual void finish() {}
    /// What went wrong since it was last asked: one French line for the error stream, told once;
    /// empty when nothing did.
    [[nodiscard]] virtual std::string trouble() { return {}; }
};
