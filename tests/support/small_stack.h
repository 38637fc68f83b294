// Runs a part of a test on a thread with a stack of 256 KB, as hosts give their own threads.
#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

namespace tests {

inline void runWithSmallStack(void (*body)()) {
    constexpr std::size_t kStackSize = 256 * 1024;
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    pthread_t thread;
    const auto run = [](void* function) -> void* {
        reinterpret_cast<void (*)()>(function)();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, reinterpret_cast<void*>(body)), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

} // namespace tests
