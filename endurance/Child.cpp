#include "endurance/Child.h"

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace endurance {

Child::Child(const std::function<void(const std::function<void(const std::string&)>& say)>& act) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    process_ = fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ > 0) {
        close(ends[1]);
        pipe_ = ends[0];
        return;
    }
    close(ends[0]);
    int status = 0;
    try {
        act([out = ends[1]](const std::string& line) {
            const std::string whole = line + "\n";
            if (write(out, whole.data(), whole.size()) < 0) std::perror("pipe");
        });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    std::fflush(nullptr);
    _exit(status); // The files and objects of the program that forked are not this one's to clear away.
}

Child::~Child() {
    kill();
    close(pipe_);
}

std::string Child::hears() {
    std::size_t end;
    while ((end = heard_.find('\n')) == std::string::npos) {
        char buffer[256];
        const ssize_t got = read(pipe_, buffer, sizeof buffer);
        if (got <= 0) return {};
        heard_.append(buffer, static_cast<std::size_t>(got));
    }
    const std::string line = heard_.substr(0, end);
    heard_.erase(0, end + 1);
    return line;
}

void Child::kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
}

bool Child::ends() {
    int status = 0;
    if (process_ <= 0 || waitpid(process_, &status, 0) != process_) return false;
    process_ = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace endurance
