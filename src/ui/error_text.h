// What the program says about what went wrong, in plain words.
#pragma once

#include <QString>
#include <string>

#include "fem/solver.h"
#include "model/run_time_error.h"
#include "ui/rescue_file.h"

namespace quillane {

/// The solver gave up before its tolerance: the results stand but may mislead.
QString NotConvergedText(const SolveReport& report);

/// A command that could not be carried out; the program goes on.
QString StoppedText(const RunTimeError& error);

/// A model that cannot be drawn, and why.
QString UndrawableText(const std::string& reason);

/// A typed number too large for its type.
QString TooLargeText();

/// An error that ends the program, and where the model is now.
QString FatalText(const RunTimeError& error, const RescueReport& rescue);

/// Lines for the report of a failed opening: where the model is now that stood before.
std::string ReplacedModelText(const RescueReport& rescue);

}  // namespace quillane
