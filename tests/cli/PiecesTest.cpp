// What the commands are made of: columns, names, work side by side, edit scripts.
#include <gmock/gmock.h>

#include <atomic>
#include <new>
#include <numeric>
#include <thread>

#include "hosts/cli/EditScript.h"
#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Output.h"

namespace vrn::cli {
namespace {

using ::testing::HasSubstr;

TEST(Output, ColumnsLineUpInColumnsOfTheTerminal) {
    const Style style(true);
    Table table(" ");
    table.add({"a", "", "first"});
    table.add({style.bold("試料"), "", "second", ""});
    table.add({"e\xCC\x81", "", "third"});
    EXPECT_EQ(table.text(), " a     first\n \x1B[1m試料\x1B[0m  second\n e\xCC\x81     third\n");
}

TEST(Output, NoTextMovesTheCursor) {
    EXPECT_EQ(printable("a\x1B[2Jb\nc\xFF\xC2\x9B"), "a\xEF\xBF\xBD[2Jb\\nc\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(displayName("m\xE9thode\n.xml"), "m\\xE9thode\\x0A.xml");
    EXPECT_EQ(displayName("méthode.xml"), "méthode.xml");
    EXPECT_EQ(uriOf("a b/é%.xml"), "a%20b/%C3%A9%25.xml");
    EXPECT_EQ(uriOf("/a b/c.xml"), "file:///a%20b/c.xml");
}

// Finds files that are called by the numbers below `count`.
std::function<void(const MethodFound&)> numbersBelow(int count) {
    return [count](const MethodFound& add) {
        for (int i = 0; i < count; ++i) {
            add({std::to_string(i), {}});
        }
    };
}

// What comes of a file is its number.
Outcome outcomeOf(const MethodFile& file) {
    Outcome outcome;
    outcome.out = file.path;
    return outcome;
}

int numberIn(const Outcome& outcome) { return std::stoi(outcome.out); }

TEST(Jobs, ResultsComeInOrderWhoeverIsFirst) {
    std::vector<int> taken;
    std::atomic<int> here = 0;
    std::atomic<int> left = 0;
    Jobs jobs;
    jobs.count = 4;
    jobs.makeWork = [&](unsigned) {
        ++here;
        const std::shared_ptr<void> own(nullptr, [&left](const void*) { ++left; });
        return [own](const MethodFile& file) {
            std::this_thread::sleep_for(std::chrono::microseconds((50 - std::stoi(file.path)) % 7 * 300));
            return outcomeOf(file);
        };
    };
    jobs.find = numbersBelow(50);
    jobs.take = [&](const Outcome& outcome) { taken.push_back(numberIn(outcome)); };
    jobs.stop = [] { return false; };
    jobs.run();
    ASSERT_EQ(taken.size(), 50U);
    EXPECT_TRUE(std::is_sorted(taken.begin(), taken.end()));
    EXPECT_EQ(here, 4);
    EXPECT_EQ(left, 4) << "each thread lets go of what it worked with";
}

TEST(Jobs, WhatHasBegunIsTakenWhenTheRestIsStopped) {
    for (const unsigned count : {1U, 3U}) {
        std::atomic<std::size_t> begun = 0;
        std::size_t taken = 0;
        Jobs jobs;
        jobs.count = count;
        jobs.makeWork = [&](unsigned) {
            return [&](const MethodFile& file) {
                ++begun;
                return outcomeOf(file);
            };
        };
        jobs.find = numbersBelow(100);
        jobs.take = [&](const Outcome&) { ++taken; };
        jobs.stop = [&] { return begun >= 10; };
        jobs.run();
        EXPECT_EQ(taken, begun);
        EXPECT_LT(taken, 100U);
    }
}

TEST(Jobs, OthersWorkWhileMoreIsFound) {
    std::atomic<bool> isFirstDone = false;
    Jobs jobs;
    jobs.count = 2;
    jobs.makeWork = [&](unsigned) {
        return [&](const MethodFile& file) {
            isFirstDone = true;
            return outcomeOf(file);
        };
    };
    int taken = 0;
    jobs.find = [&](const MethodFound& add) {
        add({"0", {}});
        while (!isFirstDone) {
            std::this_thread::yield();
        }
        add({"1", {}});
    };
    jobs.take = [&](const Outcome& outcome) { EXPECT_EQ(numberIn(outcome), taken++); };
    jobs.stop = [] { return false; };
    jobs.run();
    EXPECT_EQ(taken, 2);
}

TEST(Jobs, AnExceptionOnAnyThreadEndsAllAndIsReported) {
    for (const bool isHere : {true, false}) {
        std::atomic<int> begun = 0;
        const auto caller = std::this_thread::get_id();
        Jobs jobs;
        jobs.count = 3;
        jobs.makeWork = [&](unsigned) {
            return [&](const MethodFile& file) {
                ++begun;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                if ((std::this_thread::get_id() == caller) == isHere) {
                    throw Fault("no memory");
                }
                return outcomeOf(file);
            };
        };
        jobs.find = numbersBelow(1000);
        jobs.take = [](const Outcome&) {};
        jobs.stop = [] { return false; };
        EXPECT_THROW(jobs.run(), Fault);
        EXPECT_LT(begun, 1000);
    }
}

TEST(Jobs, NothingBeginsWhenThisThreadCannot) {
    for (const unsigned count : {1U, 4U}) {
        Jobs jobs;
        jobs.count = count;
        jobs.makeWork = [](unsigned worker) -> MethodWork {
            if (worker == 0) {
                throw Fault("no set");
            }
            return [](const MethodFile& file) {
                ADD_FAILURE();
                return outcomeOf(file);
            };
        };
        jobs.find = numbersBelow(100);
        jobs.take = [](const Outcome&) { ADD_FAILURE(); };
        jobs.stop = [] { return false; };
        EXPECT_THROW(jobs.run(), Fault);
    }
}

TEST(Jobs, AThreadWithoutMemoryLeavesItsWorkToTheFirst) {
    std::vector<int> taken;
    std::atomic<bool> waits = true;
    const auto first = std::this_thread::get_id();
    Jobs jobs;
    jobs.count = 3;
    jobs.makeWork = [&](unsigned) {
        return [&, done = 0](const MethodFile& file) mutable {
            if (std::this_thread::get_id() != first && done++ == 1) {
                waits = false;
                throw std::bad_alloc();
            }
            while (std::this_thread::get_id() == first && waits) {
                std::this_thread::yield();
            }
            return outcomeOf(file);
        };
    };
    jobs.find = numbersBelow(60);
    jobs.take = [&](const Outcome& outcome) { taken.push_back(numberIn(outcome)); };
    jobs.stop = [] { return false; };
    jobs.run();
    std::vector<int> all(60);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(taken, all);
}

std::string problem(const std::string& script) {
    try {
        (void)parseEditScript("s.txt", script);
    } catch (const Fault& fault) {
        return fault.what();
    }
    return "none";
}

TEST(EditScript, EveryEdit) {
    const auto commands = parseEditScript("s",
                                          "# all of them\r\n"
                                          "insert WASH before 2 Volume=5 \"Hold Time\" = \"\"   # why\n\n"
                                          "insert \"before\" after 1\n"
                                          "insert WASH before=1\n"
                                          "replace 3 NOTE \"Te\\\"xt\"=\"a = #b\"\n"
                                          "set 1 X=-0.5 Y=z\n"
                                          "delete 12\n"
                                          "syringe 10uL\n"
                                          "description \"One\" \"\" Two");
    ASSERT_EQ(commands.size(), 8U);
    using Verb = EditCommand::Verb;
    EXPECT_EQ(commands[0].verb, Verb::Insert);
    EXPECT_EQ(commands[0].line, 2U);
    EXPECT_EQ(commands[0].step, 2U);
    EXPECT_TRUE(commands[0].isBefore);
    ASSERT_EQ(commands[0].values.size(), 2U);
    EXPECT_EQ(commands[0].values[1].parameter, "Hold Time");
    EXPECT_EQ(commands[0].values[1].value, "");
    EXPECT_EQ(commands[1].text, "before");
    EXPECT_EQ(commands[1].step, 1U);
    EXPECT_FALSE(commands[1].isBefore);
    EXPECT_EQ(commands[2].step, EditCommand::atEnd);
    EXPECT_EQ(commands[2].values[0].parameter, "before");
    EXPECT_EQ(commands[3].values[0].parameter, "Te\"xt");
    EXPECT_EQ(commands[3].values[0].value, "a = #b");
    EXPECT_EQ(commands[4].values[0].value, "-0.5");
    EXPECT_EQ(commands[5].step, 12U);
    EXPECT_EQ(commands[6].text, "10uL");
    EXPECT_EQ(commands[7].text, "One\r\n\r\nTwo");
}

TEST(EditScript, ProblemsNameLineAndPosition) {
    EXPECT_THAT(problem("\n  move 1"), HasSubstr("s.txt:2:3: 'move' is no edit"));
    EXPECT_EQ(problem("set 0 A=1"), "s.txt:1:5: '0' is not the number of a step");
    EXPECT_EQ(problem("set 1x A=1"), "s.txt:1:5: '1x' is not the number of a step");
    EXPECT_EQ(problem("set 1"), "s.txt:1:6: a parameter is expected here");
    EXPECT_EQ(problem("set 1 A"), "s.txt:1:7: 'A' needs a value: PARAMETER=VALUE");
    EXPECT_EQ(problem("set 1 A="), "s.txt:1:9: a value is expected here");
    EXPECT_EQ(problem("set 1 A=1,2"), "s.txt:1:9: a method cannot hold a value with a comma or a parenthesis");
    EXPECT_EQ(problem("delete 1 2"), "s.txt:1:10: nothing more is expected here");
    EXPECT_EQ(problem("syringe \"10uL"), "s.txt:1:9: the closing quote is missing");
    EXPECT_EQ(problem("# \xC3\xA9\nset 1 \xC3\xA9=\xE9"),
              "s.txt:2:9: this is not UTF-8: save the script as UTF-8, or as UTF-16 with a byte order mark");
    EXPECT_EQ(problem(std::string("s\0e\0", 4)), "s.txt:1:2: a NUL is no text; UTF-16 needs a byte order mark");
    EXPECT_EQ(problem("set 1 A=\x1B"), "s.txt:1:9: a method cannot hold this control character");
    EXPECT_EQ(problem(std::string("\xFF\xFE\n\0\x3D\xD8", 6)), "s.txt:2: half a character of UTF-16");
    EXPECT_EQ(problem(std::string("\xFE\xFF\0#\0", 5)), "s.txt:1: half a character of UTF-16");
    EXPECT_EQ(problem("syringe \"\\n\""), R"(s.txt:1:11: only \" and \\ can be written with a backslash)");
}

}  // namespace
}  // namespace vrn::cli
