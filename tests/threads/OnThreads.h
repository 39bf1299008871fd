// Runs work on several threads at a time.
#pragma once

#include <atomic>
#include <thread>
#include <vector>

constexpr int kThreadCount = 8;

// Calls `work` with 0 to kThreadCount - 1, each on a thread of its own. All threads start together.
template <class Work>
void OnThreads(Work const& work) {
  std::atomic<int> pendingThreads{kThreadCount};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreadCount; ++i) {
    threads.emplace_back([&work, &pendingThreads, i] {
      --pendingThreads;
      while (pendingThreads > 0) std::this_thread::yield();
      work(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}
