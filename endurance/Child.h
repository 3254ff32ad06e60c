// A program beside this one: what it does goes on after a fork, and its words come through a pipe.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

namespace endurance {

class Child {
public:
    /// Starts `act` in a process of its own; what `say` is given reaches hears(). No thread may run at that time.
    explicit Child(const std::function<void(const std::function<void(const std::string&)>& say)>& act);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    /// Kills it where it still runs.
    ~Child();

    /// The next line that it says, without its end; empty once it has ended.
    std::string hears();
    /// Ends it as a power cut does: nothing of it runs any more.
    void kill();
    /// Waits for its end. Whether it ended by itself, and well.
    bool ends();

private:
    pid_t process_ = -1;
    int pipe_ = -1;
    std::string heard_;
};

} // namespace endurance
