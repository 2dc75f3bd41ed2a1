#pragma once

#include <functional>
#include <string>

#include "sim/json/JsonObject.h"

namespace orvo::sim {

/// Reads the file at `path`, which must hold one JSON object, and hands it to `read`; members that `read` did
/// not ask for are refused. Comments in the manner of C are allowed. Throws JsonError, its text beginning
/// with the path: for a file that can't be read, for a syntax error with line and column, for a key that
/// stands twice in one object, and for whatever `read` throws as JsonError.
void readJsonFile(const std::string& path, const std::function<void(JsonObject&)>& read);

/// `path` as it is meant in a file that lies at `file`: a relative one begins in that file's folder.
std::string pathBeside(const std::string& file, const std::string& path);

}   // namespace orvo::sim
