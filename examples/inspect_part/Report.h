#pragma once

/// The report on an inspection, as text and as a picture.

#include "Inspection.h"

namespace Inspect
{

/// Prints the report to the standard output; the last line is the verdict.
void PrintReport(const Part& part, const Inspection& inspection);

/// Draws the part in plan view and each profile in a side view, deviations magnified by a factor; 0 stands for one that
/// suits the largest. False when the file cannot be written.
bool DrawReport(const Part& part, const Inspection& inspection, double magnification, const std::string& path);

} // namespace Inspect
