// Texts about errors.
#pragma once

#include <QString>
#include <string>

#include "edit/press.h"
#include "fem/solver.h"
#include "model/run_time_error.h"
#include "ui/rescue_file.h"

namespace quillane {

/// Returns whether every load of the model is connected to adequate supports; false if unknown.
bool LoadsAreCarried(const Model& model);

/// Warns that the solver stopped before its tolerance, and names the cause: the supports, unless
/// all loads are connected to adequate ones.
QString NotConvergedText(const SolveReport& report, const Model& model);

/// Reports a command that failed; the program goes on.
QString StoppedText(const RunTimeError& error);

/// Reports that the model cannot be drawn, and the reason.
QString UndrawableText(const QString& reason);

/// Reports a refused press: one of the last three values of PressResult.
QString RefusalText(PressResult refusal);

/// Reports that the results shown are those before any analysis.
QString MissingResultsText();

/// Reports an error that ends the program, and the rescue file.
QString FatalText(const RunTimeError& error, const RescueReport& rescue);

/// Returns lines for the report of a failed opening: the rescue file of the replaced model.
std::string ReplacedModelText(const RescueReport& rescue);

}  // namespace quillane
