// What goes wrong with a machine, as rows: each is one line on the error stream and its status
// within a second, and nothing is lost, half-written or left behind.
#include <algorithm>
#include <filesystem>
#include <set>

#include "tests/bridges/modbus_program.h"
#include "tests/end_to_end/failure_circumstances.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/sanitizers.h"

namespace {

struct failure_row {
    circumstance wrong;
    const char* command;
    int status;
    /// All of the error stream, without its last line end.
    const char* said;
};

using enum circumstance;

// clang-format off
constexpr failure_row rows[] = {
    // The display.
    {no_display,   "zk4sim --no-panel",                    1, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe"},
    {no_display,   "zk4sim --csv $disk/new",               1, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe"},
    {no_display,   "zk4sim --manual",                      1, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe"},
    {no_display,   "zk4sim --play $recording",             1, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe"},
    {no_display,   "zk4sim --exercise $exercise",          1, "zk4sim: pas d'écran (DISPLAY est vide): --headless s'en passe"},
    {no_display,   "lecteur $exercise",                    1, "lecteur: pas d'écran; --pdf, --ps, --txt et --pages s'en passent"},
    {no_display,   "dialogues",                            1, "Can't open display: "},
    {no_display,   "quorin -automemlink $ident",           1, "ident_mem=$ident\nCan't open display: "},
    {dead_display, "zk4sim --no-panel",                    1, "zk4sim: l'écran :9998 ne répond pas: --headless s'en passe"},
    {dead_display, "quorin -automemlink $ident",           1, "ident_mem=$ident\nCan't open display: :9998"},

    // Another user's segment, session and files.
    {other_user, "quorin-io $ident list",                  1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident get te",                1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident set MT=1",              1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident reset",                 1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident wait te=7",             1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident expect te=1",           1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident pulse MT",              1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident watch",                 1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident record $disk/new.csv",  1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident status",                1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-io $ident end",                   1, "quorin-io: segment $ident: accès refusé"},
    {other_user, "quorin-modbus $ident --port 1",          1, "quorin-modbus: segment $ident: accès refusé"},
    {other_user, "quorin-modbus $ident --map",             1, "quorin-modbus: segment $ident: accès refusé"},
    {other_user, "quorin -automemlink $ident",             1, "ident_mem=$ident\nIOshare: erreur sur partage memoire\nshmat() client refuse pour ident mem=$ident\n"},
    {other_user, "zk4sim --headless --play $disk/secret",  1, "zk4sim: $disk/secret: accès refusé"},
    {other_user, "zk4sim --headless --exercise $disk/secret", 1, "zk4sim: $disk/secret: accès refusé"},
    {other_user, "zk4sim --headless --manual --names $disk/secret", 1, "zk4sim: $disk/secret: accès refusé"},
    {other_user, "zk4sim --headless --no-panel --csv $disk/secret", 1, "zk4sim: $disk/secret: accès refusé"},
    {other_user, "zk4sim --headless --no-panel --duration 0.1", 0, "zk4sim: prise de contrôle $runtime/quorin: accès refusé\nzk4sim: durée écoulée\nbilan: bonnes=0 mauvaises=0 incidents=0"},
    {other_user, "quorin-lesson check $disk/secret",       1, "quorin-lesson: $disk/secret: accès refusé"},
    {other_user, "quorin-lesson show $disk/secret",        1, "quorin-lesson: $disk/secret: accès refusé"},
    {other_user, "quorin-lesson hide $exercise -o $disk/secret", 1, "quorin-lesson: $disk/secret: accès refusé"},
    {other_user, "quorin-lesson mark $disk/secret $recording", 1, "quorin-lesson: $disk/secret: accès refusé"},
    {other_user, "quorin-lesson mark 01_premiere_commande $disk/secret", 3, "quorin-lesson: $disk/secret: accès refusé"},
    {other_user, "lecteur $disk/secret --txt /dev/stdout", 1, "lecteur: ne peut pas lire $disk/secret: Permission denied"},
    {other_user, "lecteur $exercise --pdf $disk/secret",   1, "lecteur: ne peut pas écrire $disk/secret: Permission denied"},

    // A folder in which nothing may be made.
    {other_user, "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: $disk/new: accès refusé"},
    {other_user, "zk4sim --headless --no-panel --vcd $disk/new", 1, "zk4sim: $disk/new: accès refusé"},
    {other_user, "quorin-lesson hide $exercise -o $disk/new", 1, "quorin-lesson: $disk/new: accès refusé"},
    {other_user, "quorin-lesson mark 01_premiere_commande $recording --csv $disk/new", 1, "quorin-lesson: $disk/new: accès refusé"},
    {other_user, "quorin-lesson mark 01_premiere_commande $recording --pdf $disk/new", 1, "quorin-lesson: $disk/new: accès refusé"},
    {other_user, "lecteur $exercise --ps $disk/new",       1, "lecteur: ne peut pas écrire $disk/new: Permission denied"},
    {read_only_disk, "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: $disk/new: système de fichiers en lecture seule"},
    {read_only_disk, "zk4sim --headless --no-panel --vcd $disk/old", 1, "zk4sim: $disk/old: système de fichiers en lecture seule"},
    {read_only_disk, "quorin-io $ident record $disk/new.csv", 1, "quorin-io: $disk/new.csv: système de fichiers en lecture seule"},
    {read_only_disk, "quorin-io $ident record $disk/old --format vcd", 1, "quorin-io: $disk/old: système de fichiers en lecture seule"},
    {read_only_disk, "quorin-lesson hide $exercise -o $disk/old", 1, "quorin-lesson: $disk/old: système de fichiers en lecture seule"},
    {read_only_disk, "quorin-lesson mark 01_premiere_commande $recording --csv $disk/new", 1, "quorin-lesson: $disk/new: système de fichiers en lecture seule"},
    {read_only_disk, "quorin-lesson mark 01_premiere_commande $recording --pdf $disk/old", 1, "quorin-lesson: $disk/old: système de fichiers en lecture seule"},
    {read_only_disk, "lecteur $exercise --txt $disk/old",  1, "lecteur: ne peut pas écrire $disk/old: Read-only file system"},

    // A disk without room.
    {full_disk, "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: $disk/new: plus de place sur le disque"},
    {full_disk, "zk4sim --headless --no-panel --vcd $disk/new", 1, "zk4sim: $disk/new: plus de place sur le disque"},
    {full_disk, "zk4sim --headless --play $recording --csv $disk/new", 1, "zk4sim: $disk/new: plus de place sur le disque"},
    {full_disk, "quorin-io $ident record $disk/new.csv",   1, "quorin-io: $disk/new.csv: plus de place sur le disque"},
    {full_disk, "quorin-io $ident record $disk/new.vcd",   1, "quorin-io: $disk/new.vcd: plus de place sur le disque"},
    {full_disk, "quorin-lesson hide $exercise -o $disk/new", 1, "quorin-lesson: $disk/new: plus de place sur le disque"},
    {full_disk, "quorin-lesson hide $exercise -o $disk/old", 1, "quorin-lesson: $disk/old: plus de place sur le disque"},
    {full_disk, "quorin-lesson mark 01_premiere_commande $recording --csv $disk/old", 1, "quorin-lesson: $disk/old: plus de place sur le disque"},
    {full_disk, "quorin-lesson mark 01_premiere_commande $recording --pdf $disk/old", 1, "quorin-lesson: $disk/old: plus de place sur le disque"},
    {full_disk, "lecteur $exercise --pdf $disk/new",       1, "lecteur: ne peut pas écrire $disk/new: No space left on device"},
    {full_disk, "lecteur $exercise --ps $disk/old",        1, "lecteur: ne peut pas écrire $disk/old: No space left on device"},
    {full_disk, "lecteur $exercise --txt $disk/old",       1, "lecteur: ne peut pas écrire $disk/old: No space left on device"},
    {full_disk, "lecteur $exercise --pages $disk/new",     1, "lecteur: ne peut pas écrire $disk/new: No space left on device"},
    {full_disk, "lecteur $exercise --pages $disk/old",     1, "lecteur: ne peut pas écrire $disk/old: No space left on device"},
    {files_that_may_not_grow, "quorin-lesson hide $exercise -o $disk/old", 1, "quorin-lesson: $disk/old: fichier trop grand"},
    {files_that_may_not_grow, "quorin-lesson mark 01_premiere_commande $recording --pdf $disk/new", 1, "quorin-lesson: le document PDF ne peut être fait: fichier trop grand"},
    {files_that_may_not_grow, "lecteur $exercise --pdf $disk/old", 1, "lecteur: ne peut pas écrire $disk/old: File too large"},

    // The standard streams.
    {full_output, "zk4sim --version",                      1, "zk4sim: la sortie standard ne prend rien"},
    {full_output, "zk4sim --headless --no-panel",          1, "zk4sim: la sortie standard ne prend rien"},
    {full_output, "quorin-io --help",                      1, "quorin-io: la sortie standard ne prend rien"},
    {full_output, "quorin-io $ident list",                 1, "quorin-io: la sortie standard ne prend rien"},
    {full_output, "quorin-io $ident status",               1, "quorin-io: la sortie standard ne prend rien"},
    {full_output, "quorin-io $ident watch --initial",      1, "quorin-io: la sortie standard ne prend rien"},
    {full_output, "quorin-io $ident record - --format csv", 1, "quorin-io: la sortie standard ne prend rien"},
    {full_output, "quorin-lesson list",                    1, "quorin-lesson: la sortie standard ne prend rien"},
    {full_output, "quorin-lesson mark 01_premiere_commande $recording", 1, "quorin-lesson: la sortie standard ne prend rien"},
    {full_output, "quorin-modbus $ident --map",            1, "quorin-modbus: la sortie standard ne prend rien"},
    {full_output, "quorin-modbus $ident --port $port",     1, "quorin-modbus: la sortie standard ne prend rien"},
    {full_output, "lecteur --help",                        1, "lecteur: la sortie standard ne prend rien"},
    {closed_output, "quorin-io $ident list",               1, "quorin-io: la sortie standard ne prend rien"},
    {closed_output, "quorin-lesson list",                  1, "quorin-lesson: la sortie standard ne prend rien"},
    {closed_output, "quorin-modbus $ident --map",          1, "quorin-modbus: la sortie standard ne prend rien"},
    {closed_output, "zk4sim --headless --no-panel --duration 0.1", 0, "zk4sim: durée écoulée\nbilan: bonnes=0 mauvaises=0 incidents=0"},
    {closed_input,  "zk4sim --headless --no-panel --duration 0.1", 0, "zk4sim: durée écoulée\nbilan: bonnes=0 mauvaises=0 incidents=0"},
    {closed_input,  "quorin-io $ident get te",             0, ""},
    {closed_input,  "quorin-lesson list",                  0, ""},
    {closed_input,  "quorin-modbus $ident --map",          0, ""},
    {closed_errors, "zk4sim --headless --no-panel --duration 0.1", 0, ""},
    {closed_errors, "zk4sim --headless --no-panel --csv $disk/no/where", 1, ""},
    {closed_errors, "quorin-io $ident get te",             0, ""},
    {closed_errors, "quorin-io $ident get nowhere",        1, ""},
    {closed_errors, "quorin-lesson check $disk/nowhere",   1, ""},
    {closed_errors, "quorin-modbus $ident --version",      0, ""},

    // A panel that is none.
    {none, "zk4sim --headless --panel $disk/nowhere",      1, "zk4sim: panneau $disk/nowhere: fichier ou dossier introuvable"},
    {none, "zk4sim --headless --panel $disk/secret --csv $disk/new", 1, "zk4sim: panneau $disk/secret: accès refusé"},

    // A second one beside the first.
    {none, "zk4sim --headless --no-panel --csv $disk/recorded", 1, "zk4sim: $disk/recorded: un autre programme y enregistre"},
    {none, "quorin-io $ident record $disk/recorded --format csv", 1, "quorin-io: $disk/recorded: un autre programme y enregistre"},
    {none, "quorin-modbus $ident --port $taken",           1, "quorin-modbus: 127.0.0.1:$taken: déjà pris"},

    // The system's segments.
    {no_segment_left,     "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: segment: la limite du système est atteinte (ipcs -l)"},
    {no_segment_left,     "zk4sim --headless --exec 'touch $disk/new'",   1, "zk4sim: segment: la limite du système est atteinte (ipcs -l)"},
    {no_segment_left,     "convoyeur --no-panel --vcd $disk/new",         1, "convoyeur: segment: la limite du système est atteinte (ipcs -l)"},
    {no_segment_left,     "quorin-io 5 get te",            1, "quorin-io: segment 5: il n'existe pas"},
    {no_segment_memory,   "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: segment: la limite du système est atteinte (ipcs -l)"},
    {small_segments_only, "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: segment: demande que le système ne permet pas"},
    {small_segments_only, "zk4sim --headless --exercise $exercise --csv $disk/new", 1, "zk4sim: segment: demande que le système ne permet pas"},
    {no_memory_to_make,   "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: segment: mémoire insuffisante"},
    {no_memory_to_make,   "zk4sim --headless --manual --exec 'touch $disk/new'", 1, "zk4sim: segment: mémoire insuffisante"},
    {no_memory_to_make,   "convoyeur --no-panel --vcd $disk/new",         1, "convoyeur: segment: mémoire insuffisante"},
    {no_memory_to_attach, "zk4sim --headless --no-panel --csv $disk/new", 1, "zk4sim: segment: mémoire insuffisante"},
    {no_memory_to_attach, "zk4sim --headless --exercise $exercise --csv $disk/new", 1, "zk4sim: segment: mémoire insuffisante"},
    {no_memory_to_attach, "quorin-io $ident get te",       1, "quorin-io: segment $ident: mémoire insuffisante"},
    {no_memory_to_attach, "quorin-io $ident record $disk/new.csv", 1, "quorin-io: segment $ident: mémoire insuffisante"},
    {no_memory_to_attach, "quorin-modbus $ident --port $port", 1, "quorin-modbus: segment $ident: mémoire insuffisante"},
    {no_memory_to_attach, "quorin -automemlink $ident",    1, "ident_mem=$ident\nIOshare: erreur sur partage memoire\nshmat() client refuse pour ident mem=$ident\n"},
};
// clang-format on

class FailureCases : public Zk4sim {
protected:
    /// The words in which a row may name what it meets.
    std::string filled(std::string text) const {
        const std::pair<std::string, std::string> words[] = {
            {"$disk", disk_.path()},
            {"$runtime", folder.path},
            {"$ident", station_->ident},
            {"$exercise", QUORIN_SOURCE "/lesson/exercices/01_premiere_commande.toml"},
            {"$recording", QUORIN_SOURCE "/tests/lesson/01_premiere_commande/reference.csv"},
            {"$port", std::to_string(free_port())},
            {"$taken", std::to_string(bridge_->port)}};
        for (const auto& [name, value] : words)
            for (std::size_t at; (at = text.find(name)) != std::string::npos;)
                text.replace(at, name.size(), value);
        return text;
    }

    void SetUp() override {
        write_bytes(disk_ / "secret", "mine");
        std::filesystem::permissions(disk_ / "secret", std::filesystem::perms(0600));
        std::filesystem::permissions(disk_.path(), std::filesystem::perms(0755));
        station_.emplace(std::vector<std::string>{"--no-panel", "--csv", disk_ / "recorded"});
        ASSERT_NE(station_->ident, "");
        bridge_.emplace(station_->ident, std::vector<std::string>{});
    }

    /// The row's command in its circumstance. What is then on the disk goes to the standard output,
    /// behind a mark: the disk is gone with the command.
    outcome run(const failure_row& row) const {
        const circumstance_row& wrong = row_of(circumstances, row.wrong);
        std::vector<std::string> command = wrong.apart.command;
        const std::string look =
            row.wrong == closed_output ? "" : "\necho; echo left; ls $disk; cat $disk/old 2>&-";
        command.insert(command.end(),
                       {"sh", "-c",
                        filled("PATH=" QUORIN_PROGRAMS ":$PATH\n" + std::string(wrong.before) +
                               "\n(exec " + row.command + ") " + wrong.redirection + "\nstatus=$?" +
                               look + "\nexit $status")});
        return run_program(command);
    }

    /// What is on the disk, before and after: the names, and what the old file holds.
    std::string whole_disk(circumstance wrong) const {
        const bool own = wrong == full_disk || wrong == read_only_disk;
        if (own) return "full\nold\nmine\n";
        if (wrong == files_that_may_not_grow) return "full\nold\nrecorded\nsecret\nmine\n";
        return "recorded\nsecret\n";
    }

    void expect_row(const failure_row& row) {
        const given_clock clock;
        const outcome end = run(row);
        const double taken_s = clock.now_s();
        if (end.status == 77 || end.err.starts_with("setpriv:") || end.err.starts_with("unshare:"))
            return left_out_.insert(row.wrong), void();
        EXPECT_EQ(end.status, row.status);
        const std::string said = filled(row.said);
        EXPECT_EQ(end.err, said.empty() ? "" : said + "\n");
        EXPECT_LE(taken_s, most_s);
        const std::string left = "\nleft\n" + whole_disk(row.wrong);
        EXPECT_TRUE(row.wrong == closed_output || end.out.ends_with(left)) << end.out;
        std::filesystem::remove(disk_ / "full");
        std::filesystem::remove(disk_ / "old");
    }

    /// What it takes to make what was not made here: "a full disk: root's rights; ...".
    std::string what_is_needed() const {
        std::string all;
        for (const circumstance each : left_out_) {
            const circumstance_row& row = row_of(circumstances, each);
            all += (all.empty() ? "" : "; ") + std::string(row.name) + ": " + row.apart.needed;
        }
        return all;
    }

    static constexpr double most_s = address_sanitizer ? 3 : 1;
    const temporary_folder disk_;
    std::optional<controlled_station> station_;
    std::optional<modbus_bridge> bridge_;
    std::set<circumstance> left_out_;
};

TEST_F(FailureCases, AreALineAndAStatusWithinASecond) {
    for (const failure_row& row : rows) {
        SCOPED_TRACE(std::string(row_of(circumstances, row.wrong).name) + ": " + row.command);
        expect_row(row);
    }
    EXPECT_EQ(station_->end(), 0);
    EXPECT_TRUE(bytes_of(disk_ / "recorded").ends_with(",session,fin,fin demandée\n"))
        << "nobody has touched it";
    if (!left_out_.empty()) GTEST_SKIP() << what_is_needed();
}

/// Two machines' sessions of one user: identifiers begin at the same number in each IPC namespace.
class CollidingIdentifiers : public Zk4sim {
protected:
    static std::vector<std::string> apart(const std::string& lines) {
        std::vector<std::string> command = of_own_segments.command;
        command.insert(command.end(), {"sh", "-c", "PATH=" QUORIN_PROGRAMS ":$PATH\n" + lines});
        return command;
    }
    static constexpr char serve[] = "exec zk4sim --headless --no-panel";
};

TEST_F(CollidingIdentifiers, TheFirstKeepsItsSocketAndTheSecondSaysSo) {
    controlled_station first(std::make_unique<program>(apart(serve)));
    if (first.ident.empty()) GTEST_SKIP() << of_own_segments.needed << ": " << first.process->err();
    const std::string asked = "zk4sim --headless --exec 'quorin-io end; quorin-io status'";
    const outcome second = run_program(apart("exec " + asked));
    EXPECT_EQ(second.out, "ident_mem=" + first.ident + "\n");
    EXPECT_EQ(second.status, 1) << second.err;
    const std::string none =
        "quorin-io: segment " + first.ident + ": cette session n'a pas de socket de contrôle\n";
    EXPECT_EQ(second.err, "zk4sim: prise de contrôle " + first.socket() +
                              ": une autre session y répond\n" + none + none +
                              "zk4sim: commande terminée (statut 1)\n" + nothing_made);
    EXPECT_EQ(first.told("etat"), "marche") << "it was asked by nobody, and has its socket";
    EXPECT_EQ(first.end(), 0);
    EXPECT_FALSE(std::filesystem::exists(first.socket()));
}

}  // namespace
