// An observer beside the link: what it reads, writes and leaves alone.
#include "ioshare/io_observer.h"

#include <limits>

#include "ioshare/io_clocks.h"
#include "ioshare/io_printable.h"
#include "tests/ioshare/counted_allocations.h"
#include "tests/ioshare/test_segment.h"

namespace {

std::string shown(const io_observer& observer) {
    std::string all;
    for (const io_signal& each : observer.signals()) {
        all += each.direction == io_direction::input ? "i " : "o ";
        all += each.name + "=" + std::to_string(each.value) + (each.changed ? "*\n" : "\n");
    }
    return all;
}

std::string whole(const test_server& server) {
    return bytes_at(server.bytes(), 0, io_segment_size);
}

TEST(Observer, ListsEveryInputThenEveryOutputAsTheyStandAtTheOpening) {
    test_server server({"te", "ts"}, {"RENT"});
    server->segment->input_values[1] = INT32_MIN;
    server->segment->output_values[0] = 7;
    const io_observer observer(server->memory_ident(), io_access::read);
    EXPECT_EQ(observer.problem(), "");
    EXPECT_EQ(shown(observer), "i te=0\ni ts=-2147483648\no RENT=7\n");
}

TEST(Observer, ALookTellsWhatChangedSinceTheLookBefore) {
    test_server server({"te", "ts"}, {"RENT"});
    io_observer observer(server->memory_ident(), io_access::read);
    EXPECT_FALSE(observer.look());
    server->setreset_input(1, 3);
    server->segment->output_values[0] = 1;
    EXPECT_TRUE(observer.look());
    EXPECT_EQ(shown(observer), "i te=0\ni ts=3*\no RENT=1*\n");
    EXPECT_FALSE(observer.look());
    EXPECT_EQ(shown(observer), "i te=0\ni ts=3\no RENT=1\n");
}

TEST(Observer, SaysUnderWhichPublicationItLooked) {
    test_server server;
    io_observer observer(server->memory_ident(), io_access::read);
    EXPECT_EQ(observer.publication(), 0);
    server->inputs_go();
    server->inputs_go();
    EXPECT_EQ(observer.publication(), 0) << "that of the last look";
    observer.look();
    EXPECT_EQ(observer.publication(), 2);
    server->setreset_input(0, 1);
    EXPECT_TRUE(observer.look());
    EXPECT_EQ(observer.publication(), 2) << "written, and not published";
    for (const std::int64_t clock : {INT64_MAX, INT64_MIN, std::int64_t{-1}}) {
        server->segment->inputs_clock = clock;
        observer.look();
        EXPECT_EQ(observer.publication(), clock);
    }
    EXPECT_LT(io_observer(INT32_MAX, io_access::read).publication(), 0);
}

TEST(Observer, PublicationsBetweenTwoLooksAreCountedWhateverTheClock) {
    const struct {
        std::int64_t before, now, count;
    } rows[] = {{0, 0, 0},
                {0, 1, 1},
                {41, 1041, 1000},
                {5, 4, 0},
                {5, 0, 0},
                {5, -1, 0},
                {-1, 5, 0},
                {-1, -1, 0},
                {0, INT64_MAX, INT64_MAX},
                {INT64_MAX, INT64_MIN, 0},
                {INT64_MIN, INT64_MAX, 0},
                {INT64_MAX, 0, 0}};
    for (const auto& [before, now, count] : rows)
        EXPECT_EQ(io_publications_since(before, now), count) << before << " " << now;
}

TEST(Observer, LooksWithoutAllocating) {
    test_server server;
    io_observer observer(server->memory_ident(), io_access::read);
    const long before = counted_allocations();
    bool changed = false;
    for (int i = 0; i < 1000; ++i) {
        changed |= observer.look();
        changed |= observer.session_over();
    }
    server->segment->input_values[0] = 1;
    changed |= observer.look();
    const long after = counted_allocations();
    EXPECT_TRUE(changed);
    EXPECT_EQ(after, before);
    EXPECT_GT(before, 0) << "allocations are counted";
}

TEST(Observer, FindsAnInputBeforeAnOutputAndTheLastOfThoseNamedAlike) {
    test_server server({"te", "both", "te"}, {"RENT", "both", "RENT"});
    for (int i = 0; i < 3; ++i) {
        server->segment->input_values[i] = 10 + i;
        server->segment->output_values[i] = 20 + i;
    }
    const io_observer observer(server->memory_ident(), io_access::read);
    EXPECT_EQ(observer.find("te")->value, 12);
    EXPECT_EQ(observer.find("both")->value, 11);
    EXPECT_EQ(observer.find("RENT")->value, 22);
    EXPECT_EQ(observer.find(io_direction::output, "both")->value, 21);
    EXPECT_EQ(observer.find("TE"), nullptr);
    EXPECT_EQ(observer.find(io_direction::output, "te"), nullptr);
    EXPECT_EQ(observer.find(io_direction::input, "RENT"), nullptr);
}

TEST(Observer, ReadsWithoutChangingAByte) {
    test_server server;
    server->segment->outputs_clock = 9;
    server->inputs_go();
    const std::string before = whole(server);
    io_observer observer(server->memory_ident(), io_access::read);
    observer.look();
    observer.write("RENT", 1);
    EXPECT_EQ(whole(server), before) << "opened for reading it writes nothing";
}

TEST(Observer, WritesEveryOutputOfTheNameAndNothingElse) {
    test_server server({"te"}, {"RENT", "te", "RENT"});
    server->segment->outputs_clock = 3;
    std::string expected = whole(server);
    expected.replace(256, 4, "\xFE\xFF\xFF\xFF").replace(264, 4, "\xFE\xFF\xFF\xFF");
    io_observer observer(server->memory_ident(), io_access::write);
    observer.write("RENT", -2);
    observer.write("nothing", 1);
    EXPECT_EQ(whole(server), expected);
}

TEST(Observer, WritesOneOutputByItsNumberAndNothingElse) {
    test_server server({"te", "ts"}, {"RENT", "SORT", "RENT"});
    io_observer observer(server->memory_ident(), io_access::write);
    EXPECT_EQ(observer.outputs(), 3);
    for (const int none : {-1, 3, 1000, std::numeric_limits<int>::min()}) observer.write(none, 9);
    observer.write(2, -2);
    EXPECT_EQ(server->output_value(0), 0);
    EXPECT_EQ(server->output_value(1), 0);
    EXPECT_EQ(server->output_value(2), -2);
    io_observer reader(server->memory_ident(), io_access::read);
    reader.write(1, 9);
    EXPECT_EQ(server->output_value(1), 0);
}

TEST(Observer, SaysInOneFrenchLineWhyItCannotAttach) {
    const raw_segment too_short(4560);
    const std::string ident = std::to_string(too_short.ident);
    const struct {
        int ident;
        std::string problem;
    } rows[] = {{0, "segment 0: identifiant refusé"},
                {-1, "segment -1: il n'existe pas"},
                {INT32_MAX, "segment 2147483647: il n'existe pas"},
                {too_short.ident, "segment " + ident + ": trop court pour la liaison"}};
    for (const auto& [number, problem] : rows) {
        for (const io_access access : {io_access::read, io_access::write}) {
            io_observer observer(number, access);
            EXPECT_EQ(observer.problem(), problem);
            EXPECT_TRUE(observer.signals().empty());
            EXPECT_TRUE(observer.session_over());
            EXPECT_FALSE(observer.look());
            EXPECT_EQ(observer.find("te"), nullptr);
            observer.write("te", 1);
        }
    }
}

TEST(Observer, KnowsTheEndOfTheSession) {
    test_server server;
    const io_observer observer(server->memory_ident(), io_access::read);
    EXPECT_FALSE(observer.session_over());
    server->sharing_terminate();
    EXPECT_TRUE(observer.session_over());
}

TEST(Observer, StaysInsideTheSegmentWhateverItHolds) {
    for (const std::int32_t count : {INT32_MIN, -1, 41, 42, 43, 83, 84, 1000, INT32_MAX}) {
        SCOPED_TRACE(count);
        raw_segment segment;
        std::memset(segment.bytes + 48, 'n', io_segment_size - 48);
        std::memcpy(segment.bytes + 48, &count, sizeof count);
        std::memcpy(segment.bytes + 52, &count, sizeof count);
        io_observer observer(segment.ident, io_access::write);
        EXPECT_EQ(observer.problem(), "");
        const std::size_t expected =
            static_cast<std::size_t>(std::clamp(count, 0, 83) + std::clamp(count, 0, 42));
        ASSERT_EQ(observer.signals().size(), expected);
        if (count < 1) continue;
        EXPECT_EQ(observer.signals()[0].name, std::string(io_segment_size - 456, 'n'));
        EXPECT_EQ(observer.signals().back().value, 0x6E6E6E6E);
        observer.write(observer.signals().back().name, 0);
        observer.look();
        // The system gives whole pages: the bytes behind the segment are there to be looked at.
        EXPECT_EQ(bytes_at(segment.bytes, io_segment_size, 8192 - io_segment_size),
                  std::string(8192 - io_segment_size, '\0'));
    }
}

// It never takes the lock: whoever wants to see what became of a session may look.
TEST(Observer, OpensWhateverTheBytesOfTheLock) {
    test_server server({"te"}, {"RENT"});
    std::memset(&server->segment->lock, 0x5A, sizeof(sem_t));
    for (const io_access access : {io_access::read, io_access::write}) {
        io_observer observer(server->memory_ident(), access);
        EXPECT_EQ(observer.problem(), "");
        observer.write("RENT", 3);
        observer.look();
        EXPECT_EQ(shown(observer),
                  access == io_access::read ? "i te=0\no RENT=0\n" : "i te=0\no RENT=3*\n");
    }
}

TEST(Observer, NamesAreThoseOfTheOpening) {
    test_server server({"te"}, {"RENT"});
    io_observer observer(server->memory_ident(), io_access::read);
    std::memcpy(server->segment->input_names[0], "xx", 3);
    server->segment->nb_inputs = 30;
    observer.look();
    EXPECT_EQ(shown(observer), "i te=0\no RENT=0\n");
}

TEST(Observer, ShowsControlBytesOfANameAsEscapes) {
    const struct {
        std::string name, shown;
    } rows[] = {{"te", "te"},
                {"", ""},
                {"a\tb", "a\\x09b"},
                {"\x1B[2J\n", "\\x1B[2J\\x0A"},
                {"\x7F", "\\x7F"},
                {"pi\xC3\xA8"
                 "ce",
                 "pi\xC3\xA8"
                 "ce"},
                {"a\\x", "a\\x"},
                {"\x80\xFF ", "\x80\xFF "}};
    for (const auto& [name, shown] : rows) EXPECT_EQ(io_printable(name), shown);
    EXPECT_EQ(io_printable(std::string(1, '\0')), "\\x00");
}

}  // namespace
