#include "optimize/side_by_side.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace quillane {

int AllCores() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

void RunSideBySide(std::size_t count, int threads, const std::function<void(std::size_t)>& work) {
  std::vector<std::exception_ptr> errors(count);
  std::atomic<std::size_t> next = 0;
  const auto run = [&] {
    for (std::size_t at = next++; at < count; at = next++) {
      try {
        work(at);
      } catch (...) {
        errors[at] = std::current_exception();
        next = count;  // nothing more is begun
      }
    }
  };
  {
    std::vector<std::jthread> others;
    const std::size_t most = std::min(count, static_cast<std::size_t>(std::max(1, threads)));
    try {
      while (others.size() + 1 < most) others.emplace_back(run);
    } catch (const std::system_error&) {
      // No more threads are to be had: those that run do all the work.
    }
    run();
  }
  for (const std::exception_ptr& error : errors) {
    if (error) std::rethrow_exception(error);
  }
}

}  // namespace quillane
