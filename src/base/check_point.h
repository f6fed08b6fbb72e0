// The texts that the check-points of this thread give to a report.
#pragma once

#include <string>

namespace xDebug::xCheckPoint {

// One line per check-point, innermost first: as many ">" as it lies deep, a blank, its text.
std::string StackText();
// The detail of the innermost informer that has one, empty without.
std::string InnermostDetail();
// Where the innermost check-point stands: its informer's location or its plain text; empty without any.
std::string InnermostLocation();

}  // namespace xDebug::xCheckPoint
