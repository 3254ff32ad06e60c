// One who works the windows of the DLL itself, which a test can only send messages to and watch from outside.
#pragma once

#include "automation/Object.h"
#include "win32/Platform.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace support {

std::string readAll(const std::filesystem::path& path);
void writeAll(const std::filesystem::path& path, const std::string& text);

/// The sandbox's connection to a company's file, made by its ProgID. COM is started for this thread.
automation::ObjectPtr openConnection(const std::string& companyFile);
/// An object of the component with a session of shop 1 on that connection, ready for "Show".
automation::ObjectPtr makeModule(const automation::ObjectPtr& connection, std::int16_t user,
                                 std::int32_t interfaceId = 1507);

/// The print settings beside the DLL, once an object of it has been made.
std::filesystem::path printSettings();

/// Works on the thread that made it, from a thread beside it. The messages of the keys go to the control itself: which
/// window of the screen has the keyboard changes some time after a window has closed.
class Clerk {
public:
    /// Has the DLL's windows logged, as long as none of them has been shown before.
    Clerk();

    /// Waits for the next line `text` of the log. Fails the test when nothing comes for ten seconds; false then. A
    /// message box that comes first fails the test too.
    bool awaits(const std::string& text);
    /// Waits for the message box with that text, and presses the button of that id.
    bool answers(const std::string& text, int button);
    /// The file of the log.
    static const char* logFile();
    // They return at once: what a key starts may last as long as a window stays open.
    void presses(int key);
    void types(char character); ///< '\r' is Enter, '\n' Ctrl+Enter
    void pressesAlt(char letter);
    /// The window that the clerk works in now.
    HWND window() const;

private:
    HWND focus() const;

    const DWORD thread_ = GetCurrentThreadId();
    std::streamoff seen_ = 0; ///< of the log
};

} // namespace support
