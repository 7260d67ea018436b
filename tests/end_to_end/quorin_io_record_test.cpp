// quorin-io record: the files that it writes, how it ends, and what it refuses.
#include <signal.h>
#include <sys/stat.h>

#include <thread>

#include "tests/end_to_end/quorin_io_record.h"

namespace {

const std::string csv_block =
    "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,inconnue\n"
    "0,entree,ts,0\n0,entree,te,0\n0,entree,x=y,0\n0,entree,both,0\n"
    "0,sortie,SORT,0\n0,sortie,RENT,0\n0,sortie,both,0\n0,sortie,o=p,0\n";

TEST_F(QuorinIoRecord, WritesWhatStandsThenEachChangeThenTheEnd) {
    server->segment->output_values[1] = 3;
    const auto recording = recorder(csv);
    publish(2, -7);
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv).find("te,-7\n") != std::string::npos; }));
    server->segment->output_values[2] = INT32_MIN;
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv).find("RENT,-2") != std::string::npos; }));
    publish(1, 1);
    server->sharing_terminate();
    EXPECT_EQ(recording->wait(), 0);
    std::string block = csv_block;
    block.replace(block.find("SORT,0"), 6, "SORT,3");
    EXPECT_EQ(timeless(bytes_of(csv)), block +
                                           "T,entree,te,-7\nT,sortie,RENT,-2147483648\n"
                                           "T,entree,ts,1\nT,session,fin,session terminée\n")
        << "of those named alike the last one counts, and the last change is there";
    EXPECT_EQ(recording->out() + recording->err(), "");
    EXPECT_EQ(events_of(csv).size(), 14u);
}

TEST_F(QuorinIoRecord, WritesAWaveDump) {
    server->segment->output_values[1] = 1;
    const auto recording = recorder(vcd);
    publish(2, 1);
    ASSERT_TRUE(wait_until([&] { return bytes_of(vcd).find("\n1%\n") != std::string::npos; }));
    publish(2, 2);
    ASSERT_TRUE(wait_until([&] { return bytes_of(vcd).ends_with("\n0%\n"); }));
    server->sharing_terminate();
    EXPECT_EQ(recording->wait(), 0);
    EXPECT_EQ(timeless(bytes_of(vcd)),
              "$version quorin $end\n$timescale 1 ms $end\n"
              "$scope module capteurs $end\n$var wire 1 ! ts $end\n$var wire 1 % te $end\n"
              "$var wire 1 & x=y $end\n$var wire 1 ( both $end\n$upscope $end\n"
              "$scope module commandes $end\n$var wire 1 ) SORT $end\n$var wire 1 * RENT $end\n"
              "$var wire 1 + both $end\n$var wire 1 , o=p $end\n$upscope $end\n"
              "$enddefinitions $end\n#0\n$dumpvars\n0!\n0%\n0&\n0(\n1)\n0*\n0+\n0,\n$end\n"
              "#T\n1%\n#T\n0%\n#T\n");
}

TEST_F(QuorinIoRecord, TimesAreRealMillisecondsFromItsStart) {
    const auto start = std::chrono::steady_clock::now();
    const auto recording = recorder(csv);
    for (const int value : {1, 2}) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        publish(1, value);
        const std::string row = "ts," + std::to_string(value) + "\n";
        ASSERT_TRUE(wait_until([&] { return bytes_of(csv).ends_with(row); }));
    }
    recording->signal(SIGINT);
    EXPECT_EQ(recording->wait(), 0);
    const std::chrono::duration<double, std::milli> all = std::chrono::steady_clock::now() - start;
    const std::vector<recorded_event> ts = events_of(csv, "ts");
    ASSERT_EQ(ts.size(), 3u);
    EXPECT_EQ(ts[0].ms, 0);
    EXPECT_GE(ts[1].ms, 300);
    EXPECT_GE(ts[2].ms - ts[1].ms, 290);
    EXPECT_LE(static_cast<double>(ts[2].ms), all.count());
}

TEST_F(QuorinIoRecord, AnInputCountsOnceItIsPublished) {
    const auto recording = recorder(csv);
    server->setreset_input(1, 1);
    server->segment->output_values[1] = 1;
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv).ends_with("SORT,1\n"); }));
    server->setreset_input(1, 2);
    server->inputs_go();
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv).ends_with("ts,2\n"); }));
    recording->signal(SIGINT);
    EXPECT_EQ(recording->wait(), 0);
    EXPECT_EQ(timeless(bytes_of(csv)), csv_block +
                                           "T,sortie,SORT,1\nT,entree,ts,2\n"
                                           "T,session,fin,enregistrement arrêté\n");
}

TEST_F(QuorinIoRecord, ASignalEndsAWholeFile) {
    const struct {
        int signal, status;
        std::string words;
    } rows[] = {{SIGINT, 0, "enregistrement arrêté"},
                {SIGTERM, 143, "enregistrement arrêté (signal 15)"},
                {SIGHUP, 129, "enregistrement arrêté (signal 1)"}};
    for (const auto& [signal, status, words] : rows) {
        SCOPED_TRACE(signal);
        std::filesystem::remove(csv);
        const auto recording = recorder(csv);
        recording->signal(signal);
        EXPECT_EQ(recording->wait(), status);
        EXPECT_EQ(timeless(bytes_of(csv)), csv_block + "T,session,fin," + words + "\n");
        EXPECT_EQ(recording->err(), "");
    }
}

TEST_F(QuorinIoRecord, AHangupThatItsCallerIgnoresEndsNothing) {
    program recording(
        {"sh", "-c", "trap '' HUP; exec " + built("quorin-io") + " " + ident() + " record " + csv});
    ASSERT_TRUE(wait_until([&] { return !bytes_of(csv).empty(); }));
    recording.signal(SIGHUP);
    publish(1, 1);
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv).ends_with("ts,1\n"); }));
    recording.signal(SIGINT);
    EXPECT_EQ(recording.wait(), 0);
}

TEST_F(QuorinIoRecord, AFileIsReplacedOnlyOnceTheSessionIsThere) {
    write_bytes(csv, "before");
    EXPECT_EQ(run_program({built("quorin-io"), "2147483647", "record", csv}).status, 1);
    EXPECT_EQ(bytes_of(csv), "before");
    server->sharing_terminate();
    expect_one_line(io({"record", csv}), 4);
    EXPECT_EQ(bytes_of(csv), "before");
    expect_one_line(io({"record", vcd}), 4);
    EXPECT_FALSE(std::filesystem::exists(vcd)) << "none is made for nothing";
}

TEST_F(QuorinIoRecord, AnExistingFileIsReplacedWhole) {
    write_bytes(csv, std::string(100000, 'x'));
    program recording(command({"record", csv}));
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv) == csv_block; }));
    recording.signal(SIGINT);
    EXPECT_EQ(recording.wait(), 0);
    EXPECT_EQ(timeless(bytes_of(csv)), csv_block + "T,session,fin,enregistrement arrêté\n");
}

TEST_F(QuorinIoRecord, TheFormIsTheEndingsOrTheOptions) {
    const struct {
        std::vector<std::string> words;
        std::string begin;
    } rows[] = {{{"record", files / "a.csv"}, "ms,"},
                {{"record", files / "a.vcd"}, "$version"},
                {{"record", files / "a", "--format", "csv"}, "ms,"},
                {{"record", "--format", "vcd", files / "b"}, "$version"},
                {{"record", files / "c.csv", "--format=vcd"}, "$version"},
                {{"record", files / ".csv"}, "ms,"}};
    for (const auto& [words, begin] : rows) {
        program recording(command(words));
        const std::string file = words[words[1].front() == '-' ? 3 : 1];
        EXPECT_TRUE(wait_until([&, begin = begin] { return bytes_of(file).starts_with(begin); }))
            << file;
        recording.signal(SIGINT);
        EXPECT_EQ(recording.wait(), 0);
    }
}

TEST_F(QuorinIoRecord, AFormThatNobodyNamesIsMisuse) {
    const std::vector<std::string> rows[] = {{"record"},
                                             {"record", ""},
                                             {"record", "", "--format", "csv"},
                                             {"record", "-"},
                                             {"record", files / "r"},
                                             {"record", files / "r.txt"},
                                             {"record", files / "r.CSV"},
                                             {"record", files / "r.csv/r"},
                                             {"record", csv, "--format", "fst"},
                                             {"record", csv, "--format", ""},
                                             {"record", csv, "--format"},
                                             {"record", csv, "--format", "csv", "--format", "csv"},
                                             {"record", csv, vcd},
                                             {"record", csv, "--time"},
                                             {"watch", "--format", "csv"}};
    for (const std::vector<std::string>& words : rows) {
        SCOPED_TRACE(testing::PrintToString(words));
        expect_one_line(io(words), 2);
    }
    EXPECT_TRUE(std::filesystem::is_empty(files.path()));
}

TEST_F(QuorinIoRecord, AFileThatCannotBeWrittenIsRefused) {
    ASSERT_EQ(mkfifo((files / "fifo.csv").c_str(), 0600), 0);
    std::filesystem::create_directory(files / "folder.csv");
    const auto other = recorder(csv);
    const std::string refused[] = {files / "fifo.csv", files / "folder.csv", files / "none/r.csv",
                                   csv};
    for (const std::string& file : refused) {
        SCOPED_TRACE(file);
        const outcome end = io({"record", file});
        expect_one_line(end, 1);
        EXPECT_NE(end.err.find(file), std::string::npos) << end.err;
    }
    other->signal(SIGINT);
    EXPECT_EQ(other->wait(), 0);
    EXPECT_EQ(timeless(bytes_of(csv)), csv_block + "T,session,fin,enregistrement arrêté\n");
}

TEST_F(QuorinIoRecord, AFileThatTakesNothingMoreEndsIt) {
    const outcome end = io({"record", "/dev/full", "--format", "csv"});
    expect_one_line(end, 1);
    EXPECT_NE(end.err.find("/dev/full"), std::string::npos) << end.err;
}

TEST_F(QuorinIoRecord, AFileThatMayNotGrowKeepsWhatFittedAndEndsIt) {
    program recording(
        {"sh", "-c", "ulimit -f 2; exec " + built("quorin-io") + " " + ident() + " record " + csv});
    ASSERT_TRUE(wait_until([&] { return bytes_of(csv) == csv_block; }));
    int value = 0;
    ASSERT_TRUE(wait_until([&] {
        publish(1, ++value);
        return !recording.running();
    }));
    EXPECT_EQ(recording.wait(), 1);
    EXPECT_EQ(recording.err(),
              "quorin-io: " + csv + ": fichier trop grand; la suite n'est pas enregistrée\n");
    EXPECT_TRUE(bytes_of(csv).starts_with(csv_block));
    EXPECT_GE(bytes_of(csv).size(), 1024u);
}

TEST_F(QuorinIoRecord, AStandardOutputThatTakesNothingIsRefused) {
    for (const char* const words : {">/dev/full", ">&-"}) {
        SCOPED_TRACE(words);
        const outcome end = shell(std::string("io record - --format csv ") + words);
        expect_one_line(end, 1);
        EXPECT_EQ(end.err, "quorin-io: la sortie standard ne prend rien\n");
    }
}

TEST_F(QuorinIoRecord, EndsWithItsReaderThoughNothingChanges) {
    const outcome end = shell("{ io record - --format csv; echo $? >&2; } | head -n 2");
    EXPECT_EQ(end.out, "ms,genre,nom,valeur\n0,session,format,1\n");
    EXPECT_EQ(end.err, "quorin-io: la sortie standard ne prend rien\n1\n");
}

TEST_F(QuorinIoRecord, TheStandardOutputCarriesTheRecordingAlone) {
    program recording(command({"record", "-", "--format", "csv"}));
    ASSERT_TRUE(wait_until([&] { return recording.out() == csv_block; }));
    publish(1, 1);
    server->sharing_terminate();
    EXPECT_EQ(recording.wait(), 0);
    EXPECT_EQ(timeless(recording.out()),
              csv_block + "T,entree,ts,1\nT,session,fin,session terminée\n");
}

TEST_F(QuorinIoRecord, AfterAKillTheRowsSoFarAreInTheFile) {
    const auto recording = recorder(csv);
    publish(1, 1);
    EXPECT_TRUE(wait_until([&] { return bytes_of(csv).ends_with("ts,1\n"); }, seconds(1)));
    recording->signal(SIGKILL);
    EXPECT_EQ(recording->wait(), 137);
    EXPECT_EQ(timeless(bytes_of(csv)), csv_block + "T,entree,ts,1\n");
}

}  // namespace
