#pragma once

#include <pthread.h>

#include <cstddef>

#include <gtest/gtest.h>

namespace Tolv::Testing {

inline constexpr bool sanitized =
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif

/// Runs `call` on a thread with a stack of that size, or of the usual 8 MB under a sanitizer, which
/// enlarges frames.
template <class Call>
void onSmallStack(std::size_t kilobytes, Call call) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, sanitized ? std::size_t{8} << 20U : kilobytes << 10U);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* argument) -> void* {
                      (*static_cast<Call*>(argument))();
                      return nullptr;
                  },
                  &call),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace Tolv::Testing
