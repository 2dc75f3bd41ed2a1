#pragma once

namespace orvo::aikctl {

class BoardCameras;
class Console;

/// Connects them, and tells the console if there is none, or if the detection failed behind the first of them.
/// Throws AdapterFailure if no camera could be connected.
void connectCameras(BoardCameras& cameras, Console& console);

}   // namespace orvo::aikctl
