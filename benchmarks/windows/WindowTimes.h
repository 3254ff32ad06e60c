// When the module begins to make a form's window and when it activates one, told on the module's own thread.
#pragma once

namespace bench {

/// On the clock that never goes back.
double seconds();

/// Watches the forms of the thread that made it while it lives; one at a time.
class WindowTimes {
public:
    WindowTimes();
    ~WindowTimes();
    WindowTimes(const WindowTimes&) = delete;
    WindowTimes& operator=(const WindowTimes&) = delete;

    // Each is the first such moment since it was 0; the system has done nothing for it yet.
    double made = 0;
    double activated = 0;

private:
    void* hook_;
};

} // namespace bench
