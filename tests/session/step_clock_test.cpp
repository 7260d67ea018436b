// When steps are due: at times that the tests make up.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "session/step_clock.h"

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

const step_clock::moment start{std::chrono::hours(1000)};

/// Makes all the steps that are due: how many.
long long steps_due(step_clock& time, step_clock::moment now) {
    long long steps = 0;
    for (; time.due(now) && steps < 1'000'000; ++steps) time.stepped();
    return steps;
}

TEST(StepClock, KeepsItsPaceAtEverySpeedHoweverRarelyItIsAsked) {
    std::mt19937 random(29);
    for (const double speed : {0.1, 0.3, 0.5, 1.0, 2.5, 7.3, 10.0, 33.3, 100.0}) {
        step_clock time(speed, false, start);
        long long steps = 0;
        for (step_clock::moment now = start; now < start + seconds(200);) {
            now += microseconds(random() % 900'000);
            steps += steps_due(time, now);
            const double real_s = std::chrono::duration<double>(now - start).count();
            const double due = real_s * speed / step_s;
            ASSERT_NEAR(static_cast<double>(steps) + 0.5, due, 0.51 + due * 1e-5) << speed;
        }
    }
}

TEST(StepClock, SaysHowLongUntilTheNextStep) {
    step_clock time(2, false, start);
    EXPECT_EQ(time.until_due(start), milliseconds(5));
    EXPECT_EQ(time.until_due(start + milliseconds(3)), milliseconds(2));
    EXPECT_FALSE(time.due(start + microseconds(4999)));
    EXPECT_TRUE(time.due(start + milliseconds(5)));
    EXPECT_EQ(time.until_due(start + milliseconds(7)), milliseconds(0));
    time.stepped();
    EXPECT_EQ(time.until_due(start + milliseconds(7)), milliseconds(3));
}

TEST(StepClock, CatchesUpWithAShortStopAndWithNoMoreThanASecondOfALongOne) {
    for (const double speed : {0.1, 1.0, 100.0}) {
        step_clock time(speed, false, start);
        const auto in_a_second = static_cast<long long>(std::lround(speed / step_s));
        EXPECT_EQ(steps_due(time, start + milliseconds(900)), in_a_second * 9 / 10);
        const step_clock::moment back = start + seconds(100);
        EXPECT_LE(steps_due(time, back), in_a_second + 1);
        EXPECT_EQ(steps_due(time, back + milliseconds(500)), in_a_second / 2) << "its pace again";
    }
}

TEST(StepClock, InAPauseNothingIsDue) {
    step_clock time(1, true, start);
    EXPECT_TRUE(time.paused());
    EXPECT_FALSE(time.due(start + seconds(5)));
    EXPECT_EQ(time.until_due(start + seconds(5)), std::nullopt);
    time.resume(start + seconds(60));
    EXPECT_FALSE(time.paused());
    EXPECT_EQ(steps_due(time, start + seconds(60)), 0) << "the pause is not caught up with";
    EXPECT_EQ(steps_due(time, start + seconds(60) + milliseconds(500)), 50);
    time.pause();
    time.pause();
    EXPECT_EQ(steps_due(time, start + seconds(70)), 0);
}

TEST(StepClock, InAPauseTheStepsAskedForAreDueAtOnceAndNoOthers) {
    step_clock time(0.1, true, start);
    time.run(1000);
    EXPECT_EQ(time.steps_left(), 1000);
    EXPECT_EQ(time.until_due(start), milliseconds(0));
    EXPECT_TRUE(time.due(start));
    time.stepped();
    EXPECT_EQ(time.steps_left(), 999);
    EXPECT_EQ(steps_due(time, start), 999);
    EXPECT_EQ(time.steps_left(), 0);
    EXPECT_EQ(time.until_due(start), std::nullopt);
    EXPECT_TRUE(time.paused());
}

TEST(StepClock, GoingOnForgetsTheStepsThatWereAskedFor) {
    step_clock time(1, true, start);
    time.run(100'000'000);
    time.stepped();
    time.resume(start);
    EXPECT_EQ(time.steps_left(), 0);
    EXPECT_EQ(steps_due(time, start + milliseconds(95)), 9);
    time.pause();
    EXPECT_FALSE(time.due(start + milliseconds(200)));
}

TEST(StepClock, GoingOnWithoutAPauseChangesNothing) {
    step_clock time(1, false, start);
    for (int ms = 1; ms <= 95; ++ms) time.resume(start + milliseconds(ms));
    EXPECT_EQ(steps_due(time, start + milliseconds(95)), 9);
}

TEST(StepClock, AChangedSpeedHoldsFromThenOn) {
    step_clock time(1, false, start);
    EXPECT_EQ(steps_due(time, start + seconds(1)), 100);
    time.set_speed(100, start + seconds(1));
    EXPECT_EQ(time.speed(), 100);
    EXPECT_NEAR(static_cast<double>(steps_due(time, start + milliseconds(1900))), 9000, 1);
    time.set_speed(0.1, start + milliseconds(1900));
    EXPECT_NEAR(static_cast<double>(steps_due(time, start + milliseconds(2800))), 9, 1);
    EXPECT_EQ(steps_due(time, start + milliseconds(2800)), 0);
}

TEST(StepClock, SpeedsThatChangeAllTheTimeHoldNothingUp) {
    step_clock time(0.1, false, start);
    long long steps = 0;
    for (int ms = 1; ms <= 20'000; ++ms) {
        const step_clock::moment now = start + milliseconds(ms);
        time.set_speed(ms % 2 ? 0.1 : 0.2, now);
        steps += steps_due(time, now);
    }
    EXPECT_NEAR(static_cast<double>(steps), 0.15 * 20 / step_s, 3);
}

TEST(StepClock, ASlowerSpeedIsNotWaitedForTwice) {
    step_clock time(0.1, false, start);
    time.set_speed(100, start);
    EXPECT_LE(*time.until_due(start), microseconds(100)) << "a step at the new speed";
}

}  // namespace
