// quorin-io asking a session, against a session of the test's own behind the control socket.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <thread>

#include "session/control_address.h"
#include "tests/end_to_end/quorin_io_fixture.h"

namespace {

/// Answers one request on a control socket, and keeps it.
class fake_session {
public:
    /// What it does with the connection of its client, whose request it has read.
    using answerer = std::function<void(int line)>;

    fake_session(const std::string& path, answerer answer)
        : line_(socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(line_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(line_, 1), 0);
        thread_ = std::thread([this, answer] { serve(answer); });
    }
    ~fake_session() {
        shutdown(line_, SHUT_RDWR);  // It waits no longer, should nobody have come.
        thread_.join();
        close(line_);
    }
    fake_session(const fake_session&) = delete;
    fake_session& operator=(const fake_session&) = delete;

    /// The bytes of the request, once the client has ended.
    const std::string& request() const { return request_; }

private:
    void serve(const answerer& answer) {
        const int client = accept(line_, nullptr, nullptr);
        if (client < 0) return;
        char byte;
        while (!request_.ends_with('\n') && recv(client, &byte, 1, 0) == 1) request_ += byte;
        answer(client);
        close(client);
    }

    int line_;
    std::string request_;
    std::thread thread_;
};

fake_session::answerer saying(const std::string& bytes) {
    return [bytes](int line) {
        EXPECT_EQ(send(line, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    };
}

class QuorinIoControl : public QuorinIo {
protected:
    QuorinIoControl() {
        std::string pattern = std::filesystem::temp_directory_path() / "quorin_control_XXXXXX";
        runtime = mkdtemp(pattern.data());
        mkdir((runtime + "/quorin").c_str(), 0700);
    }
    ~QuorinIoControl() override { std::filesystem::remove_all(runtime); }

    std::string path() { return control_path(control_folder(runtime, 0), server->memory_ident()); }
    outcome ask(const std::vector<std::string>& words) {
        return run_program(command(words), {"XDG_RUNTIME_DIR=" + runtime});
    }
    /// Asks a session that answers with these bytes.
    outcome ask(const std::vector<std::string>& words, const std::string& bytes) {
        std::filesystem::remove(path());
        fake_session session(path(), saying(bytes));
        const outcome end = ask(words);
        request = session.request();
        return end;
    }

    std::string runtime, request;
};

TEST_F(QuorinIoControl, SendsTheWordsOfTheCommandLineAndPrintsTheAnswer) {
    const std::vector<std::vector<std::string>> rows = {{"status"},
                                                        {"desk", "atu=1"},
                                                        {"desk", "dc=1", "ac=0"},
                                                        {"fault", "te=stuck0"},
                                                        {"fault", "te="},
                                                        {"diagnose", "b2s=stuck1", "te=stuck0"},
                                                        {"pause"},
                                                        {"resume"},
                                                        {"speed", "2.5"},
                                                        {"speed", "-1"},
                                                        {"step", "0.01"},
                                                        {"end"}};
    for (const std::vector<std::string>& words : rows) {
        std::string line;
        for (const std::string& each : words) line += (line.empty() ? "" : " ") + each;
        SCOPED_TRACE(line);
        const outcome end = ask(words, "0\nstation=zk4\ntitre=poste 7\n");
        EXPECT_EQ(request, line + "\n");
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(end.out, "station=zk4\ntitre=poste 7\n");
        EXPECT_EQ(end.err, "");
    }
}

TEST_F(QuorinIoControl, EndsWithTheSessionsStatusAndItsLines) {
    const struct {
        std::string answer;
        int status;
        std::string out, err;
    } rows[] = {
        {"0\n", 0, "", ""},
        {"0\na", 0, "a\n", ""},
        {"1\nla session n'est pas en pause\n", 1, "", "quorin-io: la session n'est pas en pause\n"},
        {"2\nx\ny\n", 2, "", "quorin-io: x\nquorin-io: y\n"},
        {"3\nz", 3, "", "quorin-io: z\n"},
        {"4\nla session est terminée\n", 4, "", "quorin-io: la session est terminée\n"},
        {"1\n", 1, "", "quorin-io: la session a refusé\n"},
        {"0\na\x1B[2J\tb\n", 0, "a\\x1B[2J\\x09b\n", ""}};
    for (const auto& [answer, status, out, err] : rows) {
        const outcome end = ask({"status"}, answer);
        EXPECT_EQ(end.status, status) << answer;
        EXPECT_EQ(end.out, out) << answer;
        EXPECT_EQ(end.err, err) << answer;
    }
}

TEST_F(QuorinIoControl, WaitsForAnAnswerThatComesInPieces) {
    const fake_session session(path(), [](int line) {
        for (const char each : std::string("0\nvitesse=1\n")) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            EXPECT_EQ(send(line, &each, 1, MSG_NOSIGNAL), 1);
        }
    });
    EXPECT_EQ(ask({"step", "3600"}).out, "vitesse=1\n");
}

TEST_F(QuorinIoControl, WhatIsNoAnswerIsRefusedOrTheEndOfTheSession) {
    for (const char* const answer : {"", "0", "done\n", "-1\n", "256\n", " 0\n", "0 \nx\n", "\n"}) {
        SCOPED_TRACE(answer);
        const outcome end = ask({"status"}, answer);
        expect_one_line(end, 1);
        EXPECT_EQ(end.err, "quorin-io: segment " + ident() + ": la session n'a pas répondu\n");
    }
    server->sharing_terminate();
    expect_one_line(ask({"step", "10"}, ""), 4);
    EXPECT_EQ(ask({"status"}, "0\netat=fin\n").out, "etat=fin\n")
        << "a session may answer after its end";
}

TEST_F(QuorinIoControl, WithoutASocketItSaysSo) {
    const outcome none = ask({"status"});
    expect_one_line(none, 1);
    EXPECT_EQ(none.err,
              "quorin-io: segment " + ident() + ": cette session n'a pas de socket de contrôle\n");
    std::filesystem::remove_all(runtime + "/quorin");
    expect_one_line(ask({"status"}), 1);
    server->sharing_terminate();
    const outcome over = ask({"end"});
    expect_one_line(over, 4);
    EXPECT_EQ(over.err, "quorin-io: la session est terminée\n");
    const outcome gone =
        run_program({built("quorin-io"), "2147483647", "status"}, {"XDG_RUNTIME_DIR=" + runtime});
    expect_one_line(gone, 1);
    EXPECT_EQ(gone.err, "quorin-io: segment 2147483647: il n'existe pas\n");
}

TEST_F(QuorinIoControl, ASocketThatNobodyServesOrThatIsNoneIsNoSocket) {
    { const fake_session session(path(), saying("")); }
    expect_one_line(ask({"status"}), 1);
    std::filesystem::remove(path());
    std::filesystem::create_directory(path());
    expect_one_line(ask({"status"}), 1);
    const std::string far = "/" + std::string(200, 'f');
    expect_one_line(run_program(command({"status"}), {"XDG_RUNTIME_DIR=" + far}), 1);
}

TEST_F(QuorinIoControl, AnotherUsersSessionIsNotAsked) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may become another user";
    ASSERT_EQ(chmod(runtime.c_str(), 0777), 0);
    ASSERT_EQ(chmod((runtime + "/quorin").c_str(), 0777), 0);
    // Who listens is the user of the moment at which it began to.
    ASSERT_EQ(seteuid(65534), 0);
    fake_session session(path(), [](int) {});
    ASSERT_EQ(seteuid(0), 0);
    const outcome end = ask({"status"});
    expect_one_line(end, 1);
    EXPECT_EQ(session.request(), "");
}

TEST_F(QuorinIoControl, RefusesWhatNoRequestCanHold) {
    const std::string longest(4096 - 7, 'x');  // "fault " before it, a newline behind it
    EXPECT_EQ(ask({"fault", longest}, "0\n").status, 0);
    EXPECT_EQ(request.size(), 4096u);
    expect_one_line(ask({"fault", longest + "x"}), 2);
    expect_one_line(ask({"fault", "te=dead\nend"}), 2);
    expect_one_line(ask({"desk", "atu=1 dc=1"}), 2);
}

TEST_F(QuorinIoControl, AStandardOutputThatTakesNothingIsRefused) {
    const fake_session session(path(), saying("0\nstation=zk4\n"));
    const outcome end =
        run_program({"sh", "-c", built("quorin-io") + " " + ident() + " status >/dev/full"},
                    {"XDG_RUNTIME_DIR=" + runtime});
    expect_one_line(end, 1);
}

}  // namespace
