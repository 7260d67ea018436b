// A station whose inputs are set by hand, and the file that names them.
#include <gtest/gtest.h>

#include "session/failure.h"
#include "station_view/manual_station.h"
#include "tests/support/files.h"

namespace {

TEST(ManualStation, ItsInputsAreWhatIsSetFromTheNextStepOn) {
    manual_station station({{"a", "b"}, {"X"}});
    station.set_inputs({0, 7});
    EXPECT_EQ(station.sensor(1), 0);
    station.step(0.01);
    EXPECT_EQ(station.sensor(0), 0);
    EXPECT_EQ(station.sensor(1), 1);
    EXPECT_EQ(station.sensor(2), 0);
    EXPECT_EQ(station.sensor(-1), 0);
    station.set_command(0, -3);
    station.set_command(1, 5);
    EXPECT_EQ(station.commands(), std::vector<int>{-3});
}

std::string many_lines(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) lines += "s" + std::to_string(i) + "\n";
    return lines;
}

class NamesFile : public testing::Test {
protected:
    station_names read(const std::string& bytes) {
        write_bytes(file, bytes);
        return read_names(file);
    }
    const temporary_folder folder;
    const std::string file = (folder / "names").string();
};

TEST_F(NamesFile, HoldsInputsAnEmptyLineAndOutputs) {
    using list = std::vector<std::string>;
    const struct {
        std::string bytes;
        list inputs, outputs;
    } cases[] = {{"a\nb\n\nX\n", {"a", "b"}, {"X"}},
                 {"a\n\nX", {"a"}, {"X"}},
                 {"a\r\n\r\nX y\r\n", {"a"}, {"X y"}},
                 {"\nX\n", {}, {"X"}},
                 {"\xEF\xBB\xBF"
                  "a\n\nX\n",
                  {"a"},
                  {"X"}},
                 {"\xEF\xBB\xBF\nX\n", {}, {"X"}},
                 {"a\n\n", {"a"}, {}},
                 {std::string(49, 'n') + "\r\n\r\n", {std::string(49, 'n')}, {}}};
    for (const auto& [bytes, inputs, outputs] : cases) {
        const station_names names = read(bytes);
        EXPECT_EQ(names.inputs, inputs) << bytes;
        EXPECT_EQ(names.outputs, outputs) << bytes;
    }
}

TEST_F(NamesFile, SaysInOneLineWhatIsWrongWithIt) {
    const struct {
        std::string bytes, why;
    } cases[] = {{"", ":1: une ligne vide manque avant les sorties"},
                 {"a\nb\n", ":2: une ligne vide manque avant les sorties"},
                 {"a\n\nX\n\nY\n", ":4: une deuxième ligne vide"},
                 {std::string("a\n\0\n", 4), ":2: un octet nul"},
                 {std::string(200'000, 'x'), ":1: le fichier est trop long"},
                 {"a\n" + std::string(50, 'n') + "\n\n",
                  ":2: nom trop long pour la liaison (49 octets): " + std::string(50, 'n')},
                 {"a\nb\r\n\n" + std::string(48, 'n') + "é\r\nY\n",
                  ":4: nom trop long pour la liaison (49 octets): " + std::string(48, 'n') + "é"},
                 {"a\n\n\t" + std::string(60, 'n'),
                  ":3: nom trop long pour la liaison (49 octets): \\x09" + std::string(60, 'n')},
                 {many_lines(42) + "\nX\n", ":42: 42 noms: la liaison en porte 41"},
                 {"a\n\n" + many_lines(50), ":44: 42 noms: la liaison en porte 41"}};
    for (const auto& [bytes, why] : cases) {
        try {
            read(bytes);
            ADD_FAILURE() << why;
        } catch (const failure& refused) {
            EXPECT_EQ(refused.status, exit_status::refused);
            EXPECT_EQ(refused.why, file + why);
        }
    }
    EXPECT_THROW(static_cast<void>(read_names("/nowhere")), failure);
    EXPECT_THROW(static_cast<void>(read_names("/")), failure);
}

}  // namespace
