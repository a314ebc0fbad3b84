// The search for a wished volume as the command line runs it.
#pragma once

#include <functional>
#include <string>

#include "batch/options.h"
#include "batch/progress_line.h"
#include "optimize/volume_search.h"

namespace quillane {

/// Refuses what a search cannot begin with: a material or a Lambda and Epsilon that make no sense.
/// Throws Failure.
void CheckSearch(const BatchOptions& options, const Model& model);

/// Searches from an analysed model. While it runs, the layout that the leading attempt kept last is
/// written to --save and --cells, at most once a second. goOn is asked after every step.
SearchResult RunSearch(const BatchOptions& options, const Model& analysed, const LoadCases& cases,
                       double fullVolume, ProgressLine& progress,
                       const std::function<bool()>& goOn);

/// How the search ended, in a sentence. fullVolume in mm^3.
std::string SearchNote(const SearchResult& result, double share, double fullVolume);

/// The attempts as a table, a line each. fullVolume in mm^3.
std::string AttemptTable(const SearchResult& result, double fullVolume);

/// Why an attempt ended, as the note and the JSON tell it.
const char* WhyEnded(SearchEnd end);

}  // namespace quillane
