#pragma once

#include <pthread.h>

namespace Tolv::Detail {

/// Makes every `fork` of the process wait until no thread holds the mutex that `Get`, a captureless
/// lambda, returns. The mutex is then free in the child. Otherwise a child could wait forever for a
/// mutex held by a thread that does not exist in the child.
///
/// Call this once while the library loads; unloading the library undoes it.
/// @return false if memory runs out
template <class Get>
bool holdAcrossFork(Get) noexcept {
    return pthread_atfork([] { Get{}().lock(); }, [] { Get{}().unlock(); },
                          [] { Get{}().unlock(); }) == 0;
}

} // namespace Tolv::Detail
