// Tells one stretch of COM on a thread from the next: objects of an apartment that has ended must not be called again.
#pragma once

namespace com {

/// Of the calling thread; never 0, and none comes twice.
unsigned apartment() noexcept;

/// From now on the calling thread's number ends with its last CoUninitialize, and not only with the thread. The DLL
/// must stay loaded after that.
void noticeItsEnd() noexcept;

} // namespace com
