// The report of the optimization dialog.
#pragma once

#include <QString>

#include "edit/edit_state.h"
#include "optimize/course.h"

namespace quillane {

/// Returns the state of the optimization: volume, stresses, whether the layout is at rest and the
/// solver converged, and what to do.
/// At most kCourseLines lines, none longer than kLongestCourseLine.
QString CourseText(const EditState& edits, const Course& course);

inline constexpr int kCourseLines = 7;
inline const QString kLongestCourseLine = "Open the last saved model, lower the target. ";

}  // namespace quillane
