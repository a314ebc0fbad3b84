// What the program says about an analysis or a step that went wrong, in plain words.
#pragma once

#include <QString>

#include "fem/solver.h"
#include "model/run_time_error.h"
#include "ui/rescue_file.h"

namespace quillane {

/// The solver gave up before its tolerance: the results stand but may mislead.
QString NotConvergedText(const SolveReport& report);

/// A stress analysis that could not be carried out.
QString AnalysisStoppedText(const RunTimeError& error);

/// An error that ends the program, and where the model is now.
QString FatalText(const RunTimeError& error, const RescueReport& rescue);

}  // namespace quillane
