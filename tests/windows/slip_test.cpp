// What Windows itself does for the slip: files, ports and the code page. The golden slips are linked in and printed
// here once more, so that they come out byte for byte as everywhere else.
#include "basic/Apostrophes.h"
#include "tests/basic/ExpectError.h"
#include "tests/printing/SlipWorld.h"
#include "tests/support/Scratch.h"
#include "win32/Environment.h"
#include "win32/Platform.h"
#include "win32/Text.h"
#include "win32/Win32System.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using support::scratch;

const bool installed = [] {
    printing::SlipWorld::makeMachine = [] { return win32::makeSystem(); };
    return true;
}();

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
    EXPECT_FALSE(system->windowsDirectory().empty());
}

TEST_F(Machine, SaysWhyAFileCannotBeOpened) {
    EXPECT_EQ(errorOf([&] { system->readFile(scratch("no such file.txt")); }), 53);
    EXPECT_EQ(errorOf([&] { system->readFile(scratch("no such folder\\file.txt")); }), 76);
    EXPECT_EQ(errorOf([&] { system->openForOutput(scratch("no such folder\\file.txt")); }), 76);
    EXPECT_EQ(errorOf([&] { system->openForOutput("LPT9"); }), 68);
    const std::string inUse = scratch("slip in use.txt");
    const auto first = system->openForOutput(inUse);
    EXPECT_EQ(errorOf([&] { system->openForOutput(inUse); }), 70);
}

TEST_F(Machine, WritesASlipOnlyToAPlainFileWithOneName) {
    const std::string kept = "somebody else's", path = scratch("slip as a plain file.txt"),
                      other = scratch("another name of it.txt"), folder = scratch("a folder of that name");
    const auto message = [&](const std::string& name) {
        const Failure failure = failureOf([&] { system->openPlainFile(name)->write("lost"); });
        return std::to_string(failure.number) + failure.text;
    };
    for (const char* text : {"a long first text\r\n", "short\f"}) {
        const auto output = system->openPlainFile(path);
        EXPECT_EQ(message(path), "70Permission denied");
        output->write(text);
        output->close();
        EXPECT_EQ(system->readFile(path), text);
    }
    system->openForOutput(path)->write(kept);
    std::filesystem::create_hard_link(path, other);
    EXPECT_EQ(message(path), "75" + path + " is no plain file with one name, so nothing was written to it");
    EXPECT_EQ(system->readFile(other), kept);
    std::filesystem::remove(other);
    EXPECT_EQ(message(path), "0no error");

    std::filesystem::create_directory(folder);
    EXPECT_NE(message(folder).find("is no plain file"), std::string::npos);
    for (const char* device : {"NUL", "C:\\NUL", "\\\\.\\pipe\\nobody"})
        EXPECT_NE(message(device), "0no error") << device;
    EXPECT_EQ(errorOf([&] { system->openPlainFile(scratch("no such folder\\file.txt")); }), 76);
}

TEST_F(Machine, TellsAPlainFileByWhatTheSystemSaysOfIt) {
    const struct {
        const char* what;
        DWORD type, attributes, names;
        bool plain = false;
    } cases[] = {
        {"a file", FILE_TYPE_DISK, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN, 1, true},
        {"a symbolic link, a junction, a placeholder", FILE_TYPE_DISK, FILE_ATTRIBUTE_REPARSE_POINT, 1},
        {"a folder", FILE_TYPE_DISK, FILE_ATTRIBUTE_DIRECTORY, 1},
        {"no name any more", FILE_TYPE_DISK, FILE_ATTRIBUTE_NORMAL, 0},
        {"a port", FILE_TYPE_CHAR, FILE_ATTRIBUTE_NORMAL, 1},
    };
    for (const auto& one : cases)
        EXPECT_EQ(win32::isPlainFile(one.type, one.attributes, one.names), one.plain) << one.what;
    for (const char* port : {"LPT1", "lpt9:", "COM3", "com1:9600", "PRN", "\\\\.\\COM10"})
        EXPECT_TRUE(win32::isDevice(port)) << port;
    for (const char* file : {"COM10", "LPT", "LPTX", "C:\\LPT1", "COM1.txt", "\\\\till\\slips", ""})
        EXPECT_FALSE(win32::isDevice(file)) << file;
}

// Neither a program of that name somewhere else, nor one whose path is the beginning of that path.
TEST_F(Machine, StartsAProgramByItsWholePathOnly) {
    CopyFileW(L"C:\\windows\\system32\\cmd.exe", L"C:\\Program.exe", FALSE);
    for (const char* program :
         {"C:\\Program Files\\none.exe", "cmd.exe", "C:cmd.exe", "..\\windows\\system32\\cmd.exe", ""})
        EXPECT_EQ(errorOf([&] { win32::startProgram(program, "/c echo > C:\\started.txt", false); }), 53) << program;
    const auto started = [](int within) {
        for (int waited = 0; waited < within; waited += 50, Sleep(50))
            if (GetFileAttributesW(L"C:\\started.txt") != INVALID_FILE_ATTRIBUTES) return true;
        return false;
    };
    EXPECT_FALSE(started(800));
    win32::startProgram("C:\\Program.exe", "/c echo > C:\\started.txt", false);
    EXPECT_TRUE(started(10000));
    for (const wchar_t* made : {L"C:\\Program.exe", L"C:\\started.txt"}) DeleteFileW(made);
}

// Natively the same table is used, so it holds what each of the system's ANSI code pages does.
TEST_F(Machine, KnowsEveryCharacterThatACodePageMakesAnApostrophe) {
    for (const UINT codePage : {874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258})
        for (unsigned letter = 0x80; letter < 0xFFFF; ++letter) {
            const wchar_t unit = static_cast<wchar_t>(letter);
            char bytes[8] = "";
            const int size = WideCharToMultiByte(codePage, 0, &unit, 1, bytes, 8, nullptr, nullptr);
            if (size != 1 || bytes[0] != '\'') continue;
            EXPECT_TRUE(basic::hasApostrophe(win32::narrow({&unit, 1}))) << codePage << " " << letter;
        }
}

} // namespace
