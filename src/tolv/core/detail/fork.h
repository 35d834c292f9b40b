#pragma once

#include <pthread.h>

namespace Tolv::Detail {

/// Has every `fork` of the process wait until no thread holds the mutex that `Get` returns, a
/// lambda without captures. The child, which has none of the other threads, then finds it free.
/// Without that, a child that needs the mutex waits for ever for a thread that it does not have.
///
/// To be called once, while the library loads; unloading the library undoes it.
/// @return false when memory runs out
template <class Get>
bool holdAcrossFork(Get) noexcept {
    return pthread_atfork([] { Get{}().lock(); }, [] { Get{}().unlock(); },
                          [] { Get{}().unlock(); }) == 0;
}

} // namespace Tolv::Detail
