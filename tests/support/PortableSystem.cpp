#include "tests/support/PortableSystem.h"

#include "automation/RunTimeError.h"

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

char byteOf(char32_t letter) {
    if (letter < 0x80 || (letter >= 0xA0 && letter <= 0xFF)) return static_cast<char>(letter);
    const auto* found = std::find(std::begin(kUpperControls), std::end(kUpperControls), letter);
    if (letter == 0 || found == std::end(kUpperControls)) return '?';
    return static_cast<char>(0x80 + (found - std::begin(kUpperControls)));
}

/// Takes the first character off `text`, which is not empty; 0xFFFD for a byte that begins none.
char32_t takeLetter(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t size = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
    char32_t letter = size < 2 ? first : first & (0xFF >> (size + 1));
    bool valid = size > 0 && size <= text.size();
    for (std::size_t i = 1; valid && i < size; ++i) {
        valid = (byte(i) & 0xC0) == 0x80;
        letter = letter << 6 | (byte(i) & 0x3F);
    }
    text.remove_prefix(valid ? size : 1);
    return valid ? letter : 0xFFFD;
}

void append(std::string& text, char32_t letter) {
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else {
        if (letter < 0x800) {
            text += static_cast<char>(0xC0 | letter >> 6);
        } else {
            text += static_cast<char>(0xE0 | letter >> 12);
            text += static_cast<char>(0x80 | (letter >> 6 & 0x3F));
        }
        text += static_cast<char>(0x80 | (letter & 0x3F));
    }
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
    read.push_back(path);
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
    // Most texts are plain, and stand in every code page as they are.
    const auto plain =
        std::find_if(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    std::string bytes(text.begin(), plain);
    text.remove_prefix(bytes.size());
    while (!text.empty()) bytes += byteOf(takeLetter(text));
    return bytes;
}

std::string PortableSystem::decode(std::string_view bytes) {
    if (real) return real->decode(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        append(text, byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte);
    }
    return text;
}

void PortableSystem::pause(int milliseconds) {
    pauses.push_back(milliseconds);
    if (sleeps) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace support
