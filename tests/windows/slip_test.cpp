// What Windows itself does for the slip: files, ports and the code page. The golden slips are linked in and printed here
// once more, so that they come out byte for byte as everywhere else.
#include "automation/RunTimeError.h"
#include "tests/printing/SlipWorld.h"
#include "win32/Win32System.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

const bool installed = [] {
    printing::SlipWorld::makeMachine = [] { return win32::makeSystem(); };
    return true;
}();

long errorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const automation::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

class Machine : public testing::Test {
protected:
    std::unique_ptr<goodsreq::System> system = win32::makeSystem();
};

TEST_F(Machine, HasNoBestFitForWhatTheCodePageLacks) {
    ASSERT_TRUE(installed);
    EXPECT_EQ(system->encode("Cr\xC3\xA8me \xE2\x82\xAC"), "Cr\xE8me \x80");
    // A letter with a stroke, Cyrillic, a fraction slash that would fit "/", an emoji: one "?" each.
    EXPECT_EQ(system->encode("\xC5\x81\xD0\x96\xE2\x81\x84\xF0\x9F\x98\x80."), "????.");
    EXPECT_EQ(system->decode("Cr\xE8me"), "Cr\xC3\xA8me");
}

TEST_F(Machine, SaysWhyAFileCannotBeOpened) {
    EXPECT_EQ(errorOf([&] { system->readFile("C:\\no such file.txt"); }), 53);
    EXPECT_EQ(errorOf([&] { system->readFile("C:\\no such folder\\file.txt"); }), 76);
    EXPECT_EQ(errorOf([&] { system->openForOutput("C:\\no such folder\\file.txt"); }), 76);
    EXPECT_EQ(errorOf([&] { system->openForOutput("LPT9"); }), 68);
    const auto first = system->openForOutput("C:\\slip in use.txt");
    EXPECT_EQ(errorOf([&] { system->openForOutput("C:\\slip in use.txt"); }), 70);
}

TEST_F(Machine, ReplacesWhatAFileHeld) {
    for (const char* text : {"a long first text\r\n", "short\f"}) {
        const auto output = system->openForOutput("C:\\slip replaced.txt");
        output->write(text);
        output->close();
        EXPECT_EQ(system->readFile("C:\\slip replaced.txt"), text);
    }
    EXPECT_FALSE(system->windowsDirectory().empty());
}

} // namespace
