// What the user of the command line can do about a run-time error.
#pragma once

#include <string>

#include "model/run_time_error.h"

namespace quillane {

/// Returns " Lambda must not be 0: ..." from the error's cause; empty where nothing is known.
std::string Advice(const RunTimeError& error);

}  // namespace quillane
