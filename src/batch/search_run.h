// The search for a wished volume as the command line runs it.
#pragma once

#include <string>

#include "batch/options.h"
#include "batch/progress_line.h"
#include "optimize/volume_search.h"

namespace quillane {

/// Throws Failure for a material, a Lambda or an Epsilon that a search cannot begin with.
void CheckSearch(const BatchOptions& options, const Model& model);

/// Searches from an analysed model. While it runs, the layout that the leading attempt kept last is
/// written to --save and --cells, at most once a second. A noted signal ends it before the next
/// step. Throws Failure if one of these files cannot be written, RunTimeError as SearchVolume.
SearchResult RunSearch(const BatchOptions& options, const Model& analysed, const LoadCases& cases,
                       double fullVolume, ProgressLine& progress);

/// Returns how the search ended, in a sentence. fullVolume in mm^3.
std::string SearchNote(const SearchResult& result, double share, double fullVolume);

/// Returns the attempts as a table with one line each. fullVolume in mm^3.
std::string AttemptTable(const SearchResult& result, double fullVolume);

/// Returns why an attempt ended, in words for the note and the JSON.
const char* WhyEnded(SearchEnd end);

}  // namespace quillane
