// What the module needs of the machine beyond its screen: files, ports, the code page, the folder of Windows, a pause.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace goodsreq {

/// A file or a port open for writing. Closes at its end, quietly.
class Output {
public:
    virtual ~Output() = default;
    /// The system's own error where the device refuses (61 disk full, 57 device error).
    virtual void write(std::string_view bytes) = 0;
    /// Hands over what is still held back. Errors as write.
    virtual void close() = 0;
};

class System {
public:
    virtual ~System() = default;

    /// The whole file. Errors: 53 no such file, 76 no such folder, 70 in use, 75 not to be read.
    virtual std::string readFile(const std::string& path) = 0;
    /// A file (replacing what it held), a printer port as "LPT1", or a shared printer. Errors: 52 no name, 68 no such
    /// device, 76 no such folder, 70 in use, 75 not to be written.
    virtual std::unique_ptr<Output> openForOutput(const std::string& name) = 0;
    /// A file on a disk under its one name, replacing what it held: no link, no folder, no device, nothing that another
    /// name leads to as well. Errors: 75 with a description where it is none of these, and as openForOutput.
    virtual std::unique_ptr<Output> openPlainFile(const std::string& path) = 0;
    /// Text in the code page of plain files and printers; a character that it lacks becomes one "?".
    virtual std::string encode(std::string_view text) = 0;
    /// The text of bytes in that code page.
    virtual std::string decode(std::string_view bytes) = 0;
    /// As the system writes it, without a separator at its end.
    virtual std::string windowsDirectory() = 0;
    /// The same where all users of the machine have one: on a terminal server the other is each user's own.
    virtual std::string sharedWindowsDirectory() = 0;
    /// Returns after so many milliseconds.
    virtual void pause(int milliseconds) = 0;
};

} // namespace goodsreq
