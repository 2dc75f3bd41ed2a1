#include "sim/seam/Camera.h"

#include <algorithm>
#include <iterator>

namespace orvo::sim {

namespace {

struct TextRow {
    CameraStatus status;
    const char* text;
};

constexpr TextRow kTexts[] = {
    {CameraStatus::Ok, "No error"},
    {CameraStatus::InternalFault, "The simulator has run out of memory"},
    {CameraStatus::NullArgument, "An argument is null"},
    {CameraStatus::WrongArgument, "An argument is out of its range"},
    {CameraStatus::NoBoard, "There is no such board for cameras of this kind"},
    {CameraStatus::UnknownLibrary, "This is no handle of an open library"},
    {CameraStatus::UnknownCamera, "This is no handle of a camera, or it has ended"},
    {CameraStatus::NoCamera, "There is no camera at that port and index"},
    {CameraStatus::Gone, "The camera doesn't answer any more"},
    {CameraStatus::InUse, "The camera is connected already by somebody else"},
    {CameraStatus::NotConnected, "The camera isn't connected"},
    {CameraStatus::UnknownParameter, "The camera has no parameter of that name"},
    {CameraStatus::WrongType, "The parameter is of another type"},
    {CameraStatus::NotWritable, "The parameter can't be written"},
    {CameraStatus::NotReadable, "The parameter can't be read"},
    {CameraStatus::OutOfRange, "The value is out of the parameter's range"},
    {CameraStatus::OffStep, "The value is no multiple of the parameter's step"},
    {CameraStatus::UnknownEntry, "The enumeration has no such entry"},
    {CameraStatus::UnknownRegister, "The camera has no register of that name"},
};

}   // namespace

const char* cameraErrorTextOf(int32_t status)
{
    const auto* const row = std::find_if(std::begin(kTexts), std::end(kTexts), [&](const TextRow& entry) {
        return static_cast<int32_t>(entry.status) == status;
    });
    return row == std::end(kTexts) ? "Unknown error" : row->text;
}

}   // namespace orvo::sim
