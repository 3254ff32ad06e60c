#include "win32/Win32System.h"

#include "automation/RunTimeError.h"
#include "basic/Text.h"
#include "win32/Platform.h"
#include "win32/Text.h"

#include <algorithm>
#include <utility>

namespace win32 {
namespace {

using automation::RunTimeError;

constexpr std::size_t kReadAtOnce = 64 * 1024;
constexpr std::size_t kWrittenAtOnce = 16 * 1024;

/// `missing` is the number for what is not there.
[[noreturn]] void raiseSystemError(DWORD error, long missing) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_NOT_READY:
    case ERROR_DEV_NOT_EXIST:
        throw RunTimeError(missing, missing == automation::kFileNotFound ? "File not found" : "Device unavailable");
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME: automation::raise(automation::kPathNotFound);
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME: throw RunTimeError(52, "Bad file name or number");
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: throw RunTimeError(70, "Permission denied");
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT: automation::raise(automation::kPathAccess);
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL: throw RunTimeError(61, "Disk full");
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY: throw RunTimeError(7, "Out of memory");
    default: throw RunTimeError(57, "Device I/O error");
    }
}

constexpr long kDeviceUnavailable = 68;

class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&&) = delete;
    ~Handle() {
        if (valid()) CloseHandle(handle_);
    }
    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    /// Whether the system closed it without an error.
    bool close() { return CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != FALSE; }

private:
    HANDLE handle_;
};

/// Lines are handed over many at once: a port takes each hand-over as a job of its own.
class FileOutput : public goodsreq::Output {
public:
    explicit FileOutput(Handle handle) : handle_(std::move(handle)) {}
    ~FileOutput() override {
        try {
            handOver();
        } catch (const RunTimeError&) {
            // The slip has failed for another reason, which is reported.
        }
    }

    void write(std::string_view bytes) override {
        held_ += bytes;
        if (held_.size() >= kWrittenAtOnce) handOver();
    }
    void close() override {
        handOver();
        if (handle_.valid() && !handle_.close()) raiseSystemError(GetLastError(), kDeviceUnavailable);
    }

private:
    void handOver() {
        const std::string text = std::exchange(held_, {});
        for (std::string_view rest = text; !rest.empty() && handle_.valid();) {
            DWORD written = 0;
            if (!WriteFile(handle_.get(), rest.data(), static_cast<DWORD>(rest.size()), &written, nullptr))
                raiseSystemError(GetLastError(), kDeviceUnavailable);
            if (written == 0) raiseSystemError(ERROR_WRITE_FAULT, kDeviceUnavailable);
            rest.remove_prefix(written);
        }
    }

    Handle handle_;
    std::string held_;
};

[[noreturn]] void refuse(const std::string& path) {
    throw RunTimeError(automation::kPathAccess, path + " is no plain file with one name, so nothing was written to it");
}

class MachineSystem : public goodsreq::System {
public:
    std::string readFile(const std::string& path) override {
        const Handle file(CreateFileW(wide(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        if (!file.valid()) raiseSystemError(GetLastError(), automation::kFileNotFound);
        std::string content;
        while (true) {
            const std::size_t filled = content.size();
            content.resize(filled + kReadAtOnce);
            DWORD count = 0;
            if (!ReadFile(file.get(), content.data() + filled, static_cast<DWORD>(kReadAtOnce), &count, nullptr))
                raiseSystemError(GetLastError(), automation::kFileNotFound);
            content.resize(filled + count);
            if (count == 0) return content;
        }
    }

    std::unique_ptr<goodsreq::Output> openForOutput(const std::string& name) override {
        // Others may read a file that is being written, a viewer that still shows the last slip for one; a port is ours
        // alone.
        const bool device = isDevice(name);
        Handle file(CreateFileW(wide(name).c_str(), GENERIC_WRITE, device ? 0 : FILE_SHARE_READ, nullptr,
                                device ? OPEN_EXISTING : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file.valid()) raiseSystemError(GetLastError(), kDeviceUnavailable);
        return std::make_unique<FileOutput>(std::move(file));
    }

    // What stands there is looked at through the open handle, and emptied only after that: between two looks by name it
    // could be exchanged, and what is refused keeps what it held.
    std::unique_ptr<goodsreq::Output> openPlainFile(const std::string& path) override {
        const std::wstring name = wide(path);
        Handle file(CreateFileW(name.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        if (!file.valid()) {
            const DWORD error = GetLastError();
            const DWORD attributes = GetFileAttributesW(name.c_str());
            if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY) refuse(path);
            raiseSystemError(error, kDeviceUnavailable);
        }
        BY_HANDLE_FILE_INFORMATION facts{};
        const DWORD type = GetFileType(file.get());
        if (type != FILE_TYPE_DISK || !GetFileInformationByHandle(file.get(), &facts) ||
            !isPlainFile(type, facts.dwFileAttributes, facts.nNumberOfLinks))
            refuse(path);
        if (!SetEndOfFile(file.get())) raiseSystemError(GetLastError(), kDeviceUnavailable);
        return std::make_unique<FileOutput>(std::move(file));
    }

    std::string encode(std::string_view text) override {
        if (text.empty() || GetACP() == CP_UTF8) return std::string(text);
        std::wstring letters;
        // A character beyond the first plane is in no such code page; its two halves make one "?".
        for (const wchar_t unit : wide(text)) {
            if (unit >= 0xDC00 && unit < 0xE000) continue;
            letters += unit >= 0xD800 && unit < 0xDC00 ? L'?' : unit;
        }
        const int units = static_cast<int>(letters.size());
        const int size =
            WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, letters.data(), units, nullptr, 0, "?", nullptr);
        std::string bytes(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, letters.data(), units, bytes.data(), size, "?", nullptr);
        return bytes;
    }

    std::string decode(std::string_view bytes) override {
        if (bytes.empty()) return {};
        const int length = static_cast<int>(bytes.size());
        const int units = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
        std::wstring text(static_cast<std::size_t>(units), L'\0');
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), units);
        return narrow(text);
    }

    std::string windowsDirectory() override {
        char folder[MAX_PATH];
        return folderIn(folder, GetWindowsDirectoryA(folder, MAX_PATH));
    }

    std::string sharedWindowsDirectory() override {
        char folder[MAX_PATH];
        return folderIn(folder, GetSystemWindowsDirectoryA(folder, MAX_PATH));
    }

    void pause(int milliseconds) override { Sleep(static_cast<DWORD>(milliseconds)); }

private:
    std::string folderIn(const char* folder, UINT length) {
        if (length == 0 || length >= MAX_PATH) automation::raise(automation::kPathNotFound);
        return decode(std::string_view(folder, length));
    }
};

} // namespace

bool isDevice(std::string_view name) {
    if (name.starts_with("\\\\.\\")) return true; // the only way to ports beyond the ninth
    const std::string port = basic::ucase(name.substr(0, name.find(':')));
    if (port == "PRN") return true;
    return port.size() == 4 && (port.starts_with("LPT") || port.starts_with("COM")) && port[3] >= '0' && port[3] <= '9';
}

bool isPlainFile(DWORD type, DWORD attributes, DWORD names) {
    return type == FILE_TYPE_DISK && !(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) &&
           names == 1;
}

std::unique_ptr<goodsreq::System> makeSystem() { return std::make_unique<MachineSystem>(); }

} // namespace win32
