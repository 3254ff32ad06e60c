#include "tests/support/PortableSystem.h"

#include "automation/RunTimeError.h"
#include "basic/Letters.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

namespace support {
namespace {

/// What code page 1252 has from 0x80 to 0x9F; 0 where it has nothing.
constexpr char32_t kUpperControls[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

/// A character of the code page as UTF-8.
std::string letterOf(char character) {
    const auto byte = static_cast<unsigned char>(character);
    std::string letter;
    basic::appendUtf8(letter, byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte);
    return letter;
}

using Refused = std::map<std::string, long>;

void refuse(const Refused& refused, const std::string& key, const std::string& description) {
    if (const auto found = refused.find(key); found != refused.end())
        throw automation::RunTimeError(found->second, description);
}

class KeptOutput : public goodsreq::Output {
public:
    KeptOutput(std::string name, std::string& content, const Refused& refused)
        : name_(std::move(name)), content_(content), refused_(refused) {}
    void write(std::string_view bytes) override {
        refuse(refused_, "write " + name_, "Cannot write");
        content_ += bytes;
    }
    void close() override { refuse(refused_, "close " + name_, "Cannot close"); }

private:
    std::string name_;
    std::string& content_;
    const Refused& refused_;
};

} // namespace

std::string PortableSystem::readFile(const std::string& path) {
    refuse(refused, path, "Cannot read");
    if (const auto found = files.find(path); found != files.end()) return found->second;
    std::string name = path;
    std::replace(name.begin(), name.end(), '\\', '/');
    std::ifstream file(name, std::ios::binary);
    if (!file) automation::raise(automation::kFileNotFound);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::unique_ptr<goodsreq::Output> PortableSystem::openForOutput(const std::string& name) {
    refuse(refused, name, "Cannot open");
    if (real) return real->openForOutput(name);
    std::string& content = files[name];
    content.clear();
    return std::make_unique<KeptOutput>(name, content, refused);
}

std::string PortableSystem::encode(std::string_view text) {
    if (real) return real->encode(text);
    static const auto characters = [] {
        std::map<std::string, char, std::less<>> made;
        for (int byte = 0x80; byte <= 0xFF; ++byte) made[letterOf(static_cast<char>(byte))] = static_cast<char>(byte);
        return made;
    }();
    std::string bytes;
    while (!text.empty()) {
        const bool plain = static_cast<unsigned char>(text[0]) < 0x80;
        std::size_t size = 1;
        while (!plain && size < text.size() && (text[size] & 0xC0) == 0x80) ++size;
        const auto found = plain ? characters.end() : characters.find(text.substr(0, size));
        bytes += plain ? text[0] : found == characters.end() ? '?' : found->second;
        text.remove_prefix(size);
    }
    return bytes;
}

std::string PortableSystem::decode(std::string_view bytes) {
    if (real) return real->decode(bytes);
    std::string text;
    for (const char character : bytes) text += letterOf(character);
    return text;
}

void PortableSystem::pause(int milliseconds) {
    pauses.push_back(milliseconds);
    if (sleeps) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace support
