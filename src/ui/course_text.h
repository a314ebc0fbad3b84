// What the optimization dialog tells about the steps.
#pragma once

#include <QString>

#include "edit/edit_state.h"
#include "optimize/course.h"

namespace quillane {

/// How the optimization goes: volume, stresses, whether layout and solver rest, and what to do.
/// At most kCourseLines lines, none longer than kLongestCourseLine.
QString CourseText(const EditState& edits, const Course& course);

inline constexpr int kCourseLines = 7;
inline const QString kLongestCourseLine =
    QStringLiteral("Open the last saved model, lower the target. ");

}  // namespace quillane
