#pragma once

#include <string>
#include <vector>

namespace orvo::aikctl {

// Nothing lists the parameters of a board or a camera. A device has some of these names, and others of its own.

/// The names that most applets have.
std::vector<std::string> boardParameterNames();
/// The standard names of GenICam that can be read.
std::vector<std::string> cameraParameterNames();

}   // namespace orvo::aikctl
