// Independent calls on several threads.
#pragma once

#include <cstddef>
#include <functional>

namespace quillane {

/// The number of threads that share the machine's cores, at least 1.
int AllCores();

/// Calls work(0) to work(count - 1) on up to so many threads, the caller's among them, and returns
/// when all have ended. Then throws what the first of them by number has thrown.
void RunSideBySide(std::size_t count, int threads, const std::function<void(std::size_t)>& work);

}  // namespace quillane
