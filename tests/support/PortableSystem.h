// The machine as tests have it: written files are kept in memory, the code page is Western European.
#pragma once

#include "common/System.h"

#include <map>
#include <string>
#include <vector>

namespace support {

class PortableSystem : public goodsreq::System {
public:
    /// What was written or put there, by the name it was opened with.
    std::map<std::string, std::string> files;
    /// Names that cannot be opened, with the error's number; "write NAME" and "close NAME" fail when it comes to that.
    std::map<std::string, long> refused;
    std::string windows = "C:\\Windows";
    std::string sharedWindows = "D:\\Windows"; ///< as on a terminal server
    std::vector<int> pauses;                   ///< each that was asked for, in milliseconds, in order
    bool sleeps = false;                       ///< whether they are made
    /// Where there is one, it opens the outputs and knows the code page in place of this one.
    std::unique_ptr<goodsreq::System> real;

    /// One of `files`, or else a real file ("\" parts folders as "/" does).
    std::string readFile(const std::string& path) override;
    std::unique_ptr<goodsreq::Output> openForOutput(const std::string& name) override;
    std::unique_ptr<goodsreq::Output> openPlainFile(const std::string& path) override {
        return real ? real->openPlainFile(path) : openForOutput(path);
    }
    std::string encode(std::string_view text) override;
    std::string decode(std::string_view bytes) override;
    std::string windowsDirectory() override { return windows; }
    std::string sharedWindowsDirectory() override { return sharedWindows; }
    void pause(int milliseconds) override;
};

} // namespace support
