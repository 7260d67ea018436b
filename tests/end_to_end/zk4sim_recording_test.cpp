// A session kept in files: what is in them, what they may be, and what happens when they take
// nothing.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <thread>

#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/sanitizers.h"

namespace {

class Zk4simRecording : public Zk4sim {
protected:
    const temporary_folder files;

    std::string file(const std::string& name) const { return files / name; }

    /// Runs a short session with these options.
    static outcome run_short(std::vector<std::string> options) {
        for (const char* const each : {"--headless", "--no-panel", "--speed", "100"})
            options.push_back(each);
        if (std::ranges::find(options, "--duration") == options.end()) {
            options.push_back("--duration");
            options.push_back("2");
        }
        return run_zk4sim(options);
    }
};

const std::string first_rows = "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,zk4\n";
const std::string last_row = "2000,session,fin,durée écoulée\n";

TEST_F(Zk4simRecording, TheFirstBlockIsTheStateBeforeTheFirstStep) {
    const outcome end =
        run_short({"--seed", "29", "--bases", "7", "--parts", "3", "--title", "poste 7, \"nord\"",
                   "--fault", "MT=dead", "--fault", "te=stuck0", "--csv", file("a.csv")});
    EXPECT_EQ(end.status, 0) << end.err;
    const std::string recording = bytes_of(file("a.csv"));
    const std::string begin = first_rows +
                              "0,session,titre,\"poste 7, \"\"nord\"\"\"\n"
                              "0,session,graine,29\n0,session,bases,7\n0,session,pieces,3\n"
                              "0,panne,te,stuck0\n0,panne,MT,dead\n"
                              "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n"
                              "0,entree,b1e,1\n0,entree,b1s,0\n";
    EXPECT_EQ(recording.substr(0, begin.size()), begin);
    EXPECT_NE(recording.find("\n0,entree,te,0\n"), std::string::npos) << "as it is published";
    EXPECT_NE(recording.find("\n0,entree,timer10_term,0\n0,sortie,DEPOSE,0\n"), std::string::npos);
    EXPECT_TRUE(recording.ends_with("\n0,sortie,BZ3,0\n500,entree,pp,1\n" + last_row)) << recording;
}

TEST_F(Zk4simRecording, OnTheStandardOutputItStandsAlone) {
    for (const std::string option : {"--csv", "--vcd"}) {
        const outcome end = run_short({option, "-"});
        EXPECT_EQ(end.status, 0) << end.err;
        EXPECT_EQ(end.err.rfind("ident_mem=", 0), 0U)
            << "the error stream's first line: " << end.err;
        EXPECT_EQ(end.out.rfind(option == "--csv" ? first_rows : "$version", 0), 0U) << end.out;
        EXPECT_TRUE(end.out.ends_with(option == "--csv" ? last_row : "#2000\n")) << end.out;
        EXPECT_EQ(end.out.find("ident_mem"), std::string::npos);
    }
}

TEST_F(Zk4simRecording, BothFormsTellTheSame) {
    const outcome end =
        run_short({"--csv", file("a.csv"), "--vcd", file("a.vcd"), "--fault", "b1s=flicker"});
    EXPECT_EQ(end.status, 0) << end.err;
    const std::string vcd = bytes_of(file("a.vcd"));
    EXPECT_NE(
        vcd.find("$timescale 1 ms $end\n$scope module capteurs $end\n$var wire 1 ! b1e $end\n"),
        std::string::npos)
        << vcd;
    EXPECT_NE(vcd.find("$scope module commandes $end\n"), std::string::npos);
    EXPECT_NE(vcd.find("$scope module pupitre $end\n"), std::string::npos);
    EXPECT_TRUE(vcd.ends_with("\n#2000\n")) << vcd;
}

TEST_F(Zk4simRecording, AnExistingFileIsReplacedOnlyOnceTheSessionHasBegun) {
    const std::string old = "des notes d'une autre séance, plus longues qu'un enregistrement\n";
    for (const char* const bad : {"--panel=/nowhere/quorin", "--seed=x"}) {
        write_bytes(file("a.csv"), old);
        const outcome end = run_zk4sim({"--headless", "--csv", file("a.csv"), bad});
        EXPECT_NE(end.status, 0) << bad;
        EXPECT_EQ(bytes_of(file("a.csv")), old) << bad;
    }
    write_bytes(file("a.csv"), std::string(100'000, 'x'));
    EXPECT_EQ(run_short({"--csv", file("a.csv")}).status, 0);
    EXPECT_EQ(bytes_of(file("a.csv")).rfind(first_rows, 0), 0U);
    EXPECT_TRUE(bytes_of(file("a.csv")).ends_with(last_row));
}

TEST_F(Zk4simRecording, AFileThatCannotBeWrittenEndsTheStartInOneLine) {
    std::filesystem::create_directory(file("folder"));
    mkfifo(file("fifo").c_str(), 0600);
    write_bytes(file("plain"), "");
    const struct {
        std::string path, why;
    } cases[] = {
        {file("folder"), "c'est un dossier"},
        {file("nowhere") + "/a.csv", "fichier ou dossier introuvable"},
        {file("plain") + "/a.csv", "un élément du chemin n'est pas un dossier"},
        {file("fifo"), "personne ne lit à l'autre bout"},
        {file(std::string(300, 'x')), "nom trop long"},
    };
    for (const std::string option : {"--csv", "--vcd"}) {
        for (const auto& [path, why] : cases) {
            const outcome end = run_short({option, path});
            EXPECT_EQ(end.status, 1) << path;
            EXPECT_EQ(end.out, "") << "no segment: " << path;
            EXPECT_EQ(end.err, "zk4sim: " + path + ": " + why + "\n");
        }
    }
    EXPECT_EQ(std::filesystem::status(file("fifo")).type(), std::filesystem::file_type::fifo);
}

TEST_F(Zk4simRecording, ALinkThatLeadsToNothingYetIsFollowed) {
    std::filesystem::create_directory(file("there"));
    std::filesystem::create_symlink("there/a.csv", file("near"));
    std::filesystem::create_symlink(file("near"), file("far"));
    EXPECT_EQ(run_zk4sim({"--csv", file("far"), "--panel", file("nowhere")}).status, 1);
    EXPECT_TRUE(std::filesystem::is_symlink(file("near")));
    EXPECT_FALSE(std::filesystem::exists(file("there/a.csv")));
    EXPECT_EQ(run_short({"--csv", file("far")}).status, 0);
    EXPECT_TRUE(bytes_of(file("there/a.csv")).ends_with(last_row));
    std::filesystem::create_symlink("round", file("round"));
    EXPECT_EQ(run_short({"--csv", file("round")}).status, 1);
    EXPECT_TRUE(std::filesystem::is_symlink(file("round")));
}

// Stacks of four gigabytes, of which the addresses allow none.
TEST_F(Zk4simRecording, WithoutAThreadTheFileStaysAndTheSessionEnds) {
    if (address_sanitizer) GTEST_SKIP() << "it needs addresses of its own";
    write_bytes(file("a.csv"), "mine");
    for (const std::string name : {"a.csv", "b.csv"}) {
        const outcome end = run_program(
            {"sh", "-c",
             "ulimit -s 4000000 && ulimit -v 1000000 || exit 77; exec " + built("zk4sim") +
                 " --headless --no-panel --duration 5 --csv " + file(name)});
        if (end.status == 77) GTEST_SKIP() << "limits of stacks and addresses: " << end.err;
        EXPECT_EQ(end.status, 1) << name;
        EXPECT_EQ(lines_in(end.err), 1) << end.err;
        EXPECT_EQ(end.err.rfind("zk4sim: " + file(name) + ": ", 0), 0U) << end.err;
    }
    EXPECT_EQ(bytes_of(file("a.csv")), "mine");
    EXPECT_FALSE(std::filesystem::exists(file("b.csv")));
}

TEST_F(Zk4simRecording, OneFileTwiceIsMisuse) {
    write_bytes(file("there"), "");
    std::filesystem::create_hard_link(file("there"), file("linked"));
    std::filesystem::create_symlink(file("new"), file("pointed"));
    const struct {
        std::string csv, vcd;
    } cases[] = {{"-", "-"},
                 {file("a"), file("a")},
                 {file("a"), files.path().string() + "/./a"},
                 {file("there"), file("linked")},
                 {file("new"), file("pointed")}};
    for (const auto& [csv, vcd] : cases) {
        const outcome end = run_short({"--csv", csv, "--vcd", vcd});
        EXPECT_EQ(end.status, 2) << csv << " " << vcd;
        EXPECT_EQ(end.err, "zk4sim: --csv et --vcd veulent le même fichier\n");
    }
    EXPECT_FALSE(std::filesystem::exists(file("a")));
}

TEST_F(Zk4simRecording, AFileOnWhichAnotherSessionRecordsIsLeftToIt) {
    controlled_station first({"--headless", "--no-panel", "--csv", file("a.csv")});
    const outcome end = run_short({"--csv", file("a.csv")});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: " + file("a.csv") + ": un autre programme y enregistre\n");
    EXPECT_EQ(first.end(), 0);
    EXPECT_TRUE(bytes_of(file("a.csv")).ends_with(",session,fin,fin demandée\n"));
}

TEST_F(Zk4simRecording, AFileThatMayNotGrowIsToldOnceAndTheSessionGoesOn) {
    const outcome end = run_program({"sh", "-c",
                                     "ulimit -f 1; exec " + built("zk4sim") +
                                         " --headless --no-panel --speed 100 --duration 60" +
                                         " --fault te=flicker --csv " + file("a.csv")});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "zk4sim: " + file("a.csv") +
                           ": fichier trop grand; la suite n'est pas enregistrée\n"
                           "zk4sim: durée écoulée\n" +
                           nothing_made);
    EXPECT_EQ(std::filesystem::file_size(file("a.csv")), 512U);
}

TEST_F(Zk4simRecording, AFullDiskIsToldOnceAndTheSessionGoesOn) {
    const outcome end = run_short({"--csv", "/dev/full", "--duration", "60"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err,
              "zk4sim: /dev/full: plus de place sur le disque; la suite n'est pas enregistrée\n"
              "zk4sim: durée écoulée\n" +
                  nothing_made);
}

const char* const own_disks = "a small disk: user and mount namespaces of one's own: ";

/// Runs a shell's lines with `dir` as the place of a small disk of its own, mounted with these
/// options.
outcome run_on_a_small_disk(const std::string& dir, const std::string& options,
                            const std::string& lines) {
    return run_program({"unshare", "--user", "--map-root-user", "--mount", "sh", "-c",
                        "mount -t tmpfs -o " + options + " none " + dir + " || exit 77\n" + lines});
}

const std::string long_session =
    built("zk4sim") + " --headless --no-panel --speed 100 --duration 150 --fault te=flicker --csv ";

TEST_F(Zk4simRecording, ADiskThatFillsUpIsToldOnceAndTheSessionGoesOn) {
    const std::string disk = files.path(), recording = file("a.csv");
    const outcome end =
        run_on_a_small_disk(disk, "size=16k",
                            "head -c 12288 /dev/zero >" + file("other") + "\n" + long_session +
                                recording + "\necho status=$?; wc -c <" + recording);
    if (end.status == 77 || end.err.starts_with("unshare:")) GTEST_SKIP() << own_disks << end.err;
    EXPECT_TRUE(end.out.ends_with("\nstatus=0\n4096\n")) << end.out;
    EXPECT_EQ(end.err, "zk4sim: " + recording +
                           ": plus de place sur le disque; la suite n'est pas enregistrée\n"
                           "zk4sim: durée écoulée\n" +
                           nothing_made);
}

TEST_F(Zk4simRecording, ADiskThatIsFullOrMayNotBeWrittenEndsTheStart) {
    const struct {
        std::string options, before, why;
    } cases[] = {
        {"size=16k", "head -c 16384 /dev/zero >" + file("other"), "plus de place sur le disque"},
        {"ro", ":", "système de fichiers en lecture seule"},
    };
    for (const auto& [options, before, why] : cases) {
        const outcome end =
            run_on_a_small_disk(files.path(), options,
                                before + " 2>&1\n" + long_session + file("a.csv") +
                                    "\necho status=$?; ls " + files.path().string());
        if (end.status == 77 || end.err.starts_with("unshare:"))
            GTEST_SKIP() << own_disks << end.err;
        EXPECT_EQ(end.err, "zk4sim: " + file("a.csv") + ": " + why + "\n");
        EXPECT_TRUE(end.out.starts_with("status=1\n")) << end.out;
        EXPECT_EQ(end.out.find("a.csv"), std::string::npos) << "no file was made";
    }
}

TEST_F(Zk4simRecording, AFolderThatMayNotBeWrittenEndsTheStart) {
    std::filesystem::permissions(files.path(), std::filesystem::perms(0555));
    const outcome end = run_program(
        {"setpriv", "--reuid=65534", "--clear-groups", "sh", "-c", long_session + file("a.csv")});
    if (end.err.find("setpriv") == 0 || end.status == 127)
        GTEST_SKIP() << "another user: root's rights";
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.err, "zk4sim: " + file("a.csv") + ": accès refusé\n");
}

TEST_F(Zk4simRecording, APipeThatNobodyReadsHoldsNothingUp) {
    int pipe_ends[2];
    ASSERT_EQ(pipe(pipe_ends), 0);
    std::string command = "exec " + built("zk4sim") +
                          " --headless --no-panel --speed 100 --duration 700 --csv - 1>&" +
                          std::to_string(pipe_ends[1]);
    for (const std::string name : {"te", "b1e", "b2e", "b3e", "vh", "ph", "init"})
        command += " --fault " + name + "=flicker";
    program session({"sh", "-c", command});
    EXPECT_EQ(session.wait(seconds(30)), 0) << session.err();
    close(pipe_ends[1]);
    close(pipe_ends[0]);
    const std::string err = session.err();
    EXPECT_NE(err.find("zk4sim: -: personne ne lit"), std::string::npos) << err;
    EXPECT_EQ(lines_in(err), 4) << err;
    EXPECT_TRUE(err.ends_with("zk4sim: durée écoulée\n" + nothing_made)) << err;
}

TEST_F(Zk4simRecording, AReaderThatGoesIsToldOnceAndTheSessionGoesOn) {
    const outcome end =
        run_program({"sh", "-c",
                     built("zk4sim") + " --headless --no-panel --speed 100 --duration 60"
                                       " --fault te=flicker --csv - | head -n 3"});
    EXPECT_EQ(end.out, first_rows);
    EXPECT_NE(end.err.find("zk4sim: -: plus personne ne lit; la suite n'est pas enregistrée\n"),
              std::string::npos)
        << end.err;
    EXPECT_TRUE(end.err.ends_with("zk4sim: durée écoulée\n" + nothing_made)) << end.err;
}

TEST_F(Zk4simRecording, AFifoGetsWhatItsReaderTakes) {
    mkfifo(file("fifo").c_str(), 0600);
    program reader({"sh", "-c", "cat " + file("fifo") + " > " + file("copy")});
    const int held = open(file("fifo").c_str(), O_RDWR);
    EXPECT_EQ(run_short({"--csv", file("fifo")}).status, 0);
    close(held);
    EXPECT_EQ(reader.wait(seconds(10)), 0);
    EXPECT_TRUE(bytes_of(file("copy")).starts_with(first_rows));
    EXPECT_TRUE(bytes_of(file("copy")).ends_with(last_row));
}

}  // namespace
