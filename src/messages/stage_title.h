// The host's progress bar speaks Russian; a terminal may not.
#pragma once

#include <string>

// The English title of a stage of the run; a title that the run does not know stays as it is. Code page 1251.
std::string EnglishStage(const std::string& russian);
