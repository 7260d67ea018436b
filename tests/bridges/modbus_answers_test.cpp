// What is answered to every function: by libmodbus, and where that is not asked.
#include "bridges/modbus_answers.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/bridges/modbus_connection.h"

namespace {

std::span<const std::uint8_t> as_span(const std::string& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

class ModbusAnswers : public testing::Test {
protected:
    ModbusAnswers() {
        for (const std::size_t i : {0U, 9U}) answers.discrete_inputs()[i] = 1;
        answers.coils()[1] = 1;
        for (std::size_t i = 0; i < 4; ++i)
            answers.input_registers()[i] = static_cast<std::uint16_t>(0x1200 + i);
    }
    std::string to(const std::string& request, bool may_write = true) {
        const std::string frame = frame_of(hex(request), 0xCAFE, 17);
        const modbus_answer made = answers.to(as_span(frame), may_write);
        written = made.written;
        const std::string bytes(made.bytes.begin(), made.bytes.end());
        if (bytes.size() < 8) return "no frame";
        const std::string body = bytes.substr(7);
        EXPECT_EQ(bytes, frame_of(body, 0xCAFE, 17)) << request;
        return in_hex(body);
    }

    modbus_answers answers{13, 10, 4};
    coil_range written;
};

struct answer_row {
    std::string request, answer;
};

TEST_F(ModbusAnswers, ReadsTheTables) {
    const answer_row rows[] = {{"01 0000 000d", "01 02 02 00"},
                               {"01 0001 0001", "01 01 01"},
                               {"02 0000 000a", "02 02 01 02"},
                               {"02 0009 0001", "02 01 01"},
                               {"04 0000 0004", "04 08 12 00 12 01 12 02 12 03"},
                               {"04 0003 0001", "04 02 12 03"}};
    for (const auto& [request, answer] : rows)
        for (const bool may_write : {false, true})
            EXPECT_EQ(to(request, may_write), answer) << request;
}

TEST_F(ModbusAnswers, WritesCoilsAndSaysWhich) {
    EXPECT_EQ(to("05 0000 ff00"), "05 00 00 ff 00");
    EXPECT_EQ(written.first, 0);
    EXPECT_EQ(written.count, 1);
    EXPECT_EQ(to("0f 0001 000c 02 fe0f"), "0f 00 01 00 0c");
    EXPECT_EQ(written.first, 1);
    EXPECT_EQ(written.count, 12);
    EXPECT_EQ(to("01 0000 000d"), "01 02 fd 1f");
    EXPECT_EQ(written.count, 0);
    EXPECT_EQ(to("05 000c 0000"), "05 00 0c 00 00");
    EXPECT_EQ(to("01 0000 000d"), "01 02 fd 0f");
}

TEST_F(ModbusAnswers, RefusesAddressesBeyondTheMap) {
    for (const answer_row& row : {answer_row{"01 000d 0001", "81 02"},
                                  {"01 0000 000e", "81 02"},
                                  {"01 ffff 0001", "81 02"},
                                  {"02 000a 0001", "82 02"},
                                  {"02 ffff 07d0", "82 02"},
                                  {"04 0004 0001", "84 02"},
                                  {"04 0003 0002", "84 02"},
                                  {"05 000d ff00", "85 02"},
                                  {"0f 000c 0002 01 03", "8f 02"}}) {
        EXPECT_EQ(to(row.request), row.answer) << row.request;
        EXPECT_EQ(written.count, 0) << row.request;
    }
}

TEST_F(ModbusAnswers, HasNoHoldingRegisters) {
    for (const answer_row& row : {answer_row{"03 0000 0001", "83 02"},
                                  {"06 0000 0001", "86 02"},
                                  {"10 0000 0001 02 0001", "90 02"},
                                  {"16 0000 0001 0002", "96 02"},
                                  {"17 0000 0001 0000 0001 02 0001", "97 02"}})
        EXPECT_EQ(to(row.request), row.answer) << row.request;
}

TEST_F(ModbusAnswers, RefusesCountsValuesAndLengthsThatCannotBe) {
    for (const answer_row& row : {answer_row{"01 0000 0000", "81 03"},
                                  {"01 0000 07d1", "81 03"},
                                  {"02 0000 0000", "82 03"},
                                  {"02 0000 ffff", "82 03"},
                                  {"03 0000 0000", "83 03"},
                                  {"03 0000 007e", "83 03"},
                                  {"04 0000 007e", "84 03"},
                                  {"05 0000 0001", "85 03"},
                                  {"05 0000 ff01", "85 03"},
                                  {"0f 0000 0000 00", "8f 03"},
                                  {"0f 0000 0008 02 ffff", "8f 03"},
                                  {"0f 0000 0009 01 ff", "8f 03"},
                                  {"0f 0000 0008 01 ffff", "8f 03"},
                                  {"0f 0000 0008 01", "8f 03"},
                                  {"0f 0000", "8f 03"},
                                  {"10 0000 0001 03 000102", "90 03"},
                                  {"01", "81 03"},
                                  {"01 0000 000100", "81 03"},
                                  {"02 0000 00", "82 03"},
                                  {"05 0000", "85 03"},
                                  {"16 0000 0001", "96 03"},
                                  {"17 0000 0001 0000 0001 02", "97 03"}})
        EXPECT_EQ(to(row.request), row.answer) << row.request;
}

TEST_F(ModbusAnswers, WhatWritesIsUnknownWithoutControl) {
    for (const answer_row& row : {answer_row{"05 0000 ff00", "85 01"},
                                  {"06 0000 0001", "86 01"},
                                  {"0f 0000 0001 01 01", "8f 01"},
                                  {"10 0000 0001 02 0001", "90 01"},
                                  {"16 0000 0001 0002", "96 01"},
                                  {"17 0000 0001 0000 0001 02 0001", "97 01"},
                                  {"05", "85 01"},
                                  {"03 0000 0001", "83 02"}})
        EXPECT_EQ(to(row.request, false), row.answer) << row.request;
    EXPECT_EQ(to("01 0000 000d"), "01 02 02 00") << "nothing was written";
}

TEST_F(ModbusAnswers, EveryOtherFunctionIsUnknown) {
    const std::string known = " 01 02 03 04 05 06 0f 10 16 17 ";
    for (int function = 0; function < 256; ++function) {
        const std::string digits = in_hex(std::string(1, static_cast<char>(function)));
        if (known.find(" " + digits + " ") != std::string::npos) continue;
        const std::string refused = in_hex(std::string(1, static_cast<char>(function | 0x80)));
        EXPECT_EQ(to(digits), refused + " 01");
        EXPECT_EQ(to(digits + " 0e 01 00"), refused + " 01");
    }
}

// A server of nothing has addresses for nothing but its registers.
TEST_F(ModbusAnswers, HasNoBitsWhereTheLinkHasNone) {
    modbus_answers bare(0, 0, 4);
    const std::string frame = frame_of(hex("02 0000 0001"));
    const auto bytes = bare.to(as_span(frame), true).bytes;
    EXPECT_EQ(in_hex({bytes.begin(), bytes.end()}), "01 02 00 00 00 03 01 82 02");
}

TEST_F(ModbusAnswers, AnyFrameIsAnsweredUnderItsOwnHeader) {
    std::mt19937 random(29);
    for (int i = 0; i < 20000; ++i) {
        std::string request(random() % 253 + 1, '\0');
        for (char& each : request) each = static_cast<char>(random());
        if (random() % 2) request[0] = static_cast<char>(random() % 24);
        const std::string frame = frame_of(request, i, static_cast<int>(random() % 256));
        const modbus_answer made = answers.to(as_span(frame), random() % 2 == 0);
        ASSERT_GE(made.bytes.size(), 9u) << in_hex(frame);
        const std::string bytes(made.bytes.begin(), made.bytes.end());
        const std::string body = bytes.substr(7);
        EXPECT_EQ(bytes, frame_of(body, i, static_cast<unsigned char>(frame[6]))) << in_hex(frame);
        EXPECT_EQ(body[0] & 0x7F, request[0] & 0x7F);
        EXPECT_LE(made.written.first + made.written.count, 13);
    }
}

}  // namespace
